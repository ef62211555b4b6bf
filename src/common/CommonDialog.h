#pragma once

#include "ResizeDirection.h"

#include <QFrame>
#include <QPoint>

/// Base of all windows: a frameless top-level frame with the skin's style sheet, optionally
/// resizable by its edges. Only the title bar moves it. Return presses the focused push or tool
/// button, as Space does.
class CommonDialog : public QFrame
{
    Q_OBJECT

public:
    /// @p resizable: the edges resize the window. @p modal: it blocks its parent window.
    CommonDialog(QWidget *parent, bool resizable, bool modal);

protected:
    /// Waits up to half a second until the window, which has just been shown, is exposed. Handles
    /// events meanwhile, except user input.
    void waitUntilExposed();

    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void endDrag();
    void region(const QPoint &globalPos);
    [[nodiscard]] QRect resizedTo(const QPoint &globalPos) const;

    bool leftPressed = false;

protected:
    QPoint dragOffset; ///< position in the frame of the last left press outside the edges

private:
    ResizeDirection direction = ResizeDirection::None; ///< frozen while the left button is held
    bool resizable;
};

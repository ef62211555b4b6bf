#pragma once

#include "ResizeDirection.h"

#include <QPixmap>
#include <QPoint>
#include <QRect>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QToolButton;

/// The title bar at the top of every window: title, window buttons, moving by dragging, and
/// maximising by a double click where the window allows it.
class CommonTitleBar : public QWidget
{
    Q_OBJECT

public:
    explicit CommonTitleBar(QWidget *parent);

    /// Hides the other buttons, as every window of the program does.
    void showCloseButtonOnly();
    void setMaxButtonVisible(bool visible);
    void setMinButtonVisible(bool visible);
    /// Whether the window may be minimised and maximised at all, by button or double click. Not so
    /// at first.
    void setMaxMinEnabled(bool enabled);
    void setTitle(const QString &title);

public slots:
    /// Minimises the window.
    void showSmall();
    /// Gives the window the work area of the primary screen, or back the place that it had before.
    void showMaxRestore();

protected:
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    QToolButton *addButton(const QString &objectName);
    void retranslate();
    void setUpLayout();

    QToolButton *btnMin;
    QToolButton *btnMax;
    QToolButton *btnClose;
    QLabel *lbTitle;
    QPixmap maxPixmap;     ///< for btnMax while maximised; null: the style sheet draws the button
    QPixmap restorePixmap; ///< for btnMax while not maximised; null likewise
    bool maximized = false;
    QPoint pressGlobalPos; ///< nothing reads it yet
    QPoint pressOffset;    ///< the press position in the parent's coordinates
    bool leftPressed = false;
    ResizeDirection direction = ResizeDirection::None;
    bool maxMinEnabled = false;
    QRect normalGeometry; ///< the window's geometry before it was maximised
};

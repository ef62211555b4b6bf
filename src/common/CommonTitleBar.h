#pragma once

#include "ResizeDirection.h"

#include <QPixmap>
#include <QPoint>
#include <QRect>
#include <QWidget>

class QLabel;
class QToolButton;

/// The title bar of all windows: title, window buttons, moving by dragging, and maximising by
/// double click if the window allows it. Presses on its own edge are passed on to the window, which
/// may resize.
class CommonTitleBar : public QWidget
{
    Q_OBJECT

public:
    explicit CommonTitleBar(QWidget *parent);

    /// Hides all other buttons, as in every window of the program.
    void showCloseButtonOnly();
    void setMaxButtonVisible(bool visible);
    void setMinButtonVisible(bool visible);
    /// Whether the window may be minimised and maximised, by button or double click. Off by
    /// default.
    void setMaxMinEnabled(bool enabled);
    void setTitle(const QString &title);

public slots:
    /// Minimises the window.
    void showSmall();
    /// Maximises the window to the primary screen's work area, or restores its previous geometry.
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
    QPixmap maxPixmap;     ///< btnMax while maximised; null: drawn by the style sheet
    QPixmap restorePixmap; ///< btnMax otherwise; null: drawn by the style sheet
    bool maximized = false;
    QPoint pressGlobalPos; ///< not read
    QPoint pressOffset;    ///< press position in the parent's coordinates
    bool leftPressed = false;
    ResizeDirection direction = ResizeDirection::None;
    bool maxMinEnabled = false;
    QRect normalGeometry; ///< geometry before the window was maximised
};

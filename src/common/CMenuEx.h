#pragma once

#include <QMenu>

/// A menu that stays open when an item is clicked or Space is pressed, so that several items can be
/// ticked. Return triggers an item and closes the menu, as usual.
class CMenuEx : public QMenu
{
    Q_OBJECT

public:
    explicit CMenuEx(QWidget *parent);

signals:
    /// The menu is closing.
    void signalHide();

protected:
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
};

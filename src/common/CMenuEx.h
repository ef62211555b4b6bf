#pragma once

#include <QMenu>

/// A menu that stays open when an item is clicked or Space is pressed on it, so that several can be
/// ticked in a row. Return chooses an item and closes the menu, as in any menu.
class CMenuEx : public QMenu
{
    Q_OBJECT

public:
    explicit CMenuEx(QWidget *parent);

signals:
    /// The menu closes.
    void signalHide();

protected:
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
};

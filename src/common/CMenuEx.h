#pragma once

#include <QMenu>

/// A menu that stays open when an item is clicked, so that several can be ticked in a row.
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
    void mouseReleaseEvent(QMouseEvent *event) override;
};

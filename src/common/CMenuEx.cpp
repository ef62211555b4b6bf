#include "CMenuEx.h"

#include <QAction>
#include <QMouseEvent>

CMenuEx::CMenuEx(QWidget *parent)
    : QMenu(parent)
{
}

void CMenuEx::hideEvent(QHideEvent *event)
{
    emit signalHide();
    QMenu::hideEvent(event);
}

void CMenuEx::mouseReleaseEvent(QMouseEvent *event)
{
    // The base class would close the menu.
    if (QAction *action = actionAt(event->pos()))
        action->activate(QAction::Trigger);
}

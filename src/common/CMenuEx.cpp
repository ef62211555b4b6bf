#include "CMenuEx.h"

#include <QAction>
#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>

namespace {

/// Ends the hover state of widgets in @p window that the pointer left while a menu was open: Qt may
/// neither send them a Leave event nor repaint them.
void endStaleHover(QWidget &window)
{
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        QEvent leave(QEvent::Leave);
        if (widget->underMouse() && !widget->rect().contains(widget->mapFromGlobal(QCursor::pos())))
            QApplication::sendEvent(widget, &leave);
    }
    window.update();
}

} // namespace

CMenuEx::CMenuEx(QWidget *parent)
    : QMenu(parent)
{
    if (parent != nullptr)
        connect(this, &CMenuEx::signalHide, parent, [parent] { endStaleHover(*parent->window()); });
}

void CMenuEx::hideEvent(QHideEvent *event)
{
    emit signalHide();
    QMenu::hideEvent(event);
}

void CMenuEx::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Space) {
        QMenu::keyPressEvent(event);
        return;
    }
    // The base class would close the menu.
    if (activeAction() != nullptr && !event->isAutoRepeat())
        activeAction()->activate(QAction::Trigger);
}

void CMenuEx::mouseReleaseEvent(QMouseEvent *event)
{
    // The base class would close the menu.
    if (QAction *action = actionAt(event->pos()))
        action->activate(QAction::Trigger);
}

#include "moc_CMenuEx.cpp"

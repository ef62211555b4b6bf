#include "MouseEvents.h"

#include <QCoreApplication>
#include <QMouseEvent>

void Mouse::send(QWidget &widget, QEvent::Type type, const QPoint &global, Qt::MouseButton button,
                 Qt::MouseButtons held)
{
    const QPoint inWidget = widget.mapFromGlobal(global);
    const QPoint inWindow = widget.window()->mapFromGlobal(global);
    QMouseEvent event(type, inWidget, inWindow, global, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

void Mouse::press(QWidget &widget, const QPoint &global, Qt::MouseButton button)
{
    send(widget, QEvent::MouseButtonPress, global, button, button);
}

void Mouse::move(QWidget &widget, const QPoint &global, Qt::MouseButtons held)
{
    send(widget, QEvent::MouseMove, global, Qt::NoButton, held);
}

void Mouse::release(QWidget &widget, const QPoint &global, Qt::MouseButton button)
{
    send(widget, QEvent::MouseButtonRelease, global, button, Qt::NoButton);
}

void Mouse::doubleClick(QWidget &widget, const QPoint &global, Qt::MouseButton button)
{
    send(widget, QEvent::MouseButtonDblClick, global, button, button);
}

void Mouse::drag(QWidget &widget, const QPoint &from, const QPoint &to, Qt::MouseButton button)
{
    move(widget, from);
    press(widget, from, button);
    move(widget, to, button);
    release(widget, to, button);
}

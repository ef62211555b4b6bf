#pragma once

#include <QEvent>
#include <QPoint>
#include <QWidget>

/// Mouse events as delivered by the window system, sent directly to a widget.
namespace Mouse {

/// Sends one event at @p global to @p widget. @p button has changed; @p held are down afterwards.
void send(QWidget &widget, QEvent::Type type, const QPoint &global, Qt::MouseButton button,
          Qt::MouseButtons held);

/// Presses @p button at @p global.
void press(QWidget &widget, const QPoint &global, Qt::MouseButton button = Qt::LeftButton);
/// Moves to @p global with the buttons @p held.
void move(QWidget &widget, const QPoint &global, Qt::MouseButtons held = Qt::NoButton);
/// Releases @p button at @p global.
void release(QWidget &widget, const QPoint &global, Qt::MouseButton button = Qt::LeftButton);
/// The second press of a double click at @p global.
void doubleClick(QWidget &widget, const QPoint &global, Qt::MouseButton button = Qt::LeftButton);

/// Moves to @p from, presses there, moves to @p to and releases.
void drag(QWidget &widget, const QPoint &from, const QPoint &to,
          Qt::MouseButton button = Qt::LeftButton);

} // namespace Mouse

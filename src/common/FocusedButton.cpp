#include "FocusedButton.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QToolButton>

namespace {

bool isReturn(const QKeyEvent &event)
{
    return (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) &&
           (event.modifiers() & ~Qt::KeypadModifier) == 0 && !event.isAutoRepeat();
}

} // namespace

bool clickFocusedButton(const QWidget &window, const QKeyEvent &event)
{
    QWidget *focused = window.focusWidget();
    const bool isClickable = qobject_cast<QPushButton *>(focused) != nullptr ||
                             qobject_cast<QToolButton *>(focused) != nullptr;
    if (!isClickable || !isReturn(event))
        return false;
    static_cast<QAbstractButton *>(focused)->click();
    return true;
}

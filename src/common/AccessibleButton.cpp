#include "AccessibleButton.h"

#include <QAbstractButton>

AccessibleButton::AccessibleButton(QAbstractButton *button, QAccessible::Role role)
    : QAccessibleWidget(button, role)
{
}

QString AccessibleButton::text(QAccessible::Text kind) const
{
    const QString given = QAccessibleWidget::text(kind);
    return given.isEmpty() && kind == QAccessible::Name ? button()->text() : given;
}

QAccessible::State AccessibleButton::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = button()->isCheckable();
    state.checked = button()->isChecked();
    state.pressed = button()->isDown();
    return state;
}

QStringList AccessibleButton::actionNames() const
{
    QStringList names = QAccessibleWidget::actionNames();
    if (button()->isEnabled())
        names.prepend(clickName());
    return names;
}

void AccessibleButton::doAction(const QString &actionName)
{
    if (actionName == clickName())
        button()->animateClick();
    else
        QAccessibleWidget::doAction(actionName);
}

QAbstractButton *AccessibleButton::button() const
{
    return static_cast<QAbstractButton *>(widget());
}

const QString &AccessibleButton::clickName() const
{
    return button()->isCheckable() ? toggleAction() : pressAction();
}

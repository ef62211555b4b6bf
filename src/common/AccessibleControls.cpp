#include "AccessibleControls.h"

#include "AccessibleCheckTable.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QTableWidget>
#include <QToolButton>

namespace {

/// A button whose press and toggle actions are clicks. Qt's own toggles check boxes without
/// clicked(), and offers no action for an InstantPopup tool button without a menu of its own.
class Button : public QAccessibleWidget
{
public:
    Button(QObject *object, QAccessible::Role role)
        : QAccessibleWidget(static_cast<QWidget *>(object), role)
        , button(*static_cast<QAbstractButton *>(object))
    {
    }

    QAccessibleInterface *parent() const override
    {
        QAccessibleInterface *cell = accessibleCellOf(button);
        return cell != nullptr ? cell : QAccessibleWidget::parent();
    }
    QString text(QAccessible::Text kind) const override
    {
        const QString given = QAccessibleWidget::text(kind);
        return given.isEmpty() && kind == QAccessible::Name ? button.text() : given;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = button.isCheckable();
        state.checked = button.isChecked();
        state.pressed = button.isDown();
        return state;
    }
    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (button.isEnabled())
            names.prepend(clickName());
        return names;
    }
    /// The click happens in the event loop, so the caller need not wait for its effects.
    void doAction(const QString &actionName) override
    {
        if (actionName == clickName())
            button.animateClick();
        else
            QAccessibleWidget::doAction(actionName);
    }

private:
    const QString &clickName() const
    {
        return button.isCheckable() ? toggleAction() : pressAction();
    }

    QAbstractButton &button;
};

/// Qt passes the object's class first, then each base class, and may do so in the object's
/// constructor, when its class is not final yet.
QAccessibleInterface *makeAccessible(const QString &className, QObject *object)
{
    if (object == nullptr || !object->isWidgetType())
        return nullptr;
    if (className == QLatin1String("QCheckBox"))
        return new Button(object, QAccessible::CheckBox);
    if (className == QLatin1String("QRadioButton"))
        return new Button(object, QAccessible::RadioButton);
    // Qt's own interface opens the menu of a button that has one.
    if (className == QLatin1String("QToolButton") &&
        static_cast<QToolButton *>(object)->menu() == nullptr)
        return new Button(object, QAccessible::Button);
    if (className == QLatin1String("QTableWidget"))
        return accessibleCheckTable(static_cast<QTableWidget *>(object));
    return nullptr;
}

} // namespace

void installAccessibleControls()
{
    QAccessible::installFactory(makeAccessible);
}

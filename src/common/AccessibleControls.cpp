#include "AccessibleControls.h"

#include "AccessibleButton.h"
#include "AccessibleCell.h"
#include "AccessibleCheckTable.h"
#include "QCheckBoxHeader.h"

#include <QAbstractButton>
#include <QTableWidget>
#include <QToolButton>

namespace {

bool hasBoxes(const QTableWidget *table)
{
    return table != nullptr &&
           qobject_cast<QCheckBoxHeader *>(table->horizontalHeader()) != nullptr;
}

QAccessibleInterface *accessibleButton(QObject *object, QAccessible::Role role)
{
    return new AccessibleButton(static_cast<QAbstractButton *>(object), role);
}

/// Not for one with a menu: Qt's own answer shows that.
QAccessibleInterface *accessibleToolButton(QToolButton *button)
{
    return button->menu() == nullptr ? accessibleButton(button, QAccessible::Button) : nullptr;
}

QAccessibleInterface *accessibleHeader(QCheckBoxHeader *header)
{
    auto *table = qobject_cast<QTableWidget *>(header->parentWidget());
    return hasBoxes(table) ? new AccessibleBoxHeader(header, {table, -1, header->boxColumn()})
                           : nullptr;
}

/// For the widget in a cell of a table with boxes.
QAccessibleInterface *accessibleCell(QWidget *widget)
{
    const QWidget *viewport = widget->parentWidget();
    auto *table =
        viewport != nullptr ? qobject_cast<QTableWidget *>(viewport->parentWidget()) : nullptr;
    if (!hasBoxes(table))
        return nullptr;
    for (int row = 0; row < table->rowCount(); ++row) {
        for (int column = 0; column < table->columnCount(); ++column) {
            if (table->cellWidget(row, column) == widget)
                return new AccessibleBoxCell(widget, {table, row, column});
        }
    }
    return nullptr;
}

/// Qt asks with the object's class first, then with each base class; and as early as in the
/// object's own constructor, when it is not yet what it is going to be.
QAccessibleInterface *makeAccessible(const QString &className, QObject *object)
{
    if (object == nullptr || !object->isWidgetType())
        return nullptr;
    if (className == QLatin1String("QCheckBox"))
        return accessibleButton(object, QAccessible::CheckBox);
    if (className == QLatin1String("QRadioButton"))
        return accessibleButton(object, QAccessible::RadioButton);
    if (className == QLatin1String("QToolButton"))
        return accessibleToolButton(static_cast<QToolButton *>(object));
    if (className == QLatin1String("QCheckBoxHeader"))
        return accessibleHeader(static_cast<QCheckBoxHeader *>(object));
    if (className == QLatin1String("QTableWidget"))
        return new AccessibleCheckTable(static_cast<QTableWidget *>(object));
    if (object->metaObject() == &QWidget::staticMetaObject)
        return accessibleCell(static_cast<QWidget *>(object));
    return nullptr;
}

} // namespace

void installAccessibleControls()
{
    QAccessible::installFactory(makeAccessible);
}

#include "AccessibleCell.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QTableWidget>

namespace {

QCheckBox *boxOf(const TablePlace &place)
{
    for (int column = 0; column < place.table->columnCount(); ++column) {
        const QWidget *cell = place.table->cellWidget(place.row, column);
        if (auto *box = cell != nullptr ? cell->findChild<QCheckBox *>() : nullptr)
            return box;
    }
    return nullptr;
}

QModelIndex indexOf(const TablePlace &place)
{
    return place.table->model()->index(place.row, place.column);
}

} // namespace

QAccessibleInterface *TablePlace::accessibleTable() const
{
    return QAccessible::queryAccessibleInterface(table);
}

QString TablePlace::text() const
{
    if (table == nullptr || column < 0)
        return {};
    const QTableWidgetItem *item =
        row < 0 ? table->horizontalHeaderItem(column) : table->item(row, column);
    return item != nullptr ? item->text() : QString();
}

QRect TablePlace::rect() const
{
    if (table == nullptr)
        return {};
    if (!isHeader()) {
        const QRect inside = table->visualRect(indexOf(*this));
        return {table->viewport()->mapToGlobal(inside.topLeft()), inside.size()};
    }
    const QHeaderView *header = table->horizontalHeader();
    if (row >= 0 || column < 0)
        return {header->mapToGlobal(QPoint(0, 0)), QSize(0, 0)};
    return {header->mapToGlobal(QPoint(header->sectionViewportPosition(column), 0)),
            QSize(header->sectionSize(column), header->height())};
}

QAccessible::Role TablePlace::role() const
{
    if (!isHeader())
        return QAccessible::Cell;
    if (row >= 0)
        return QAccessible::RowHeader;
    return column >= 0 ? QAccessible::ColumnHeader : QAccessible::Pane;
}

QAccessible::State TablePlace::state() const
{
    QAccessible::State state;
    if (table == nullptr) {
        state.invalid = true;
        return state;
    }
    const QRect shown(table->viewport()->mapToGlobal(QPoint(0, 0)), table->viewport()->size());
    state.invisible = column < 0 || !table->isVisible();
    state.offscreen = !isHeader() && !shown.intersects(rect());
    if (isHeader())
        return state;
    state.focusable = true;
    state.selectable = true;
    state.selected = table->selectionModel()->isSelected(indexOf(*this));
    state.focused = table->hasFocus() && table->currentIndex() == indexOf(*this);
    if (const QCheckBox *box = boxOf(*this)) {
        state.checkable = true;
        state.checked = box->isChecked();
    }
    return state;
}

QList<QAccessibleInterface *> AccessibleTableCell::columnHeaderCells() const
{
    QAccessibleInterface *header =
        table() != nullptr ? table()->tableInterface()->cellAt(-1, place.column) : nullptr;
    return header != nullptr ? QList<QAccessibleInterface *>{header}
                             : QList<QAccessibleInterface *>();
}

void *AccessibleTextCell::interface_cast(QAccessible::InterfaceType type)
{
    if (place.isHeader())
        return nullptr;
    if (type == QAccessible::TableCellInterface)
        return static_cast<QAccessibleTableCellInterface *>(this);
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface *>(this);
    return nullptr;
}

QWindow *AccessibleTextCell::window() const
{
    return parent() != nullptr ? parent()->window() : nullptr;
}

QString AccessibleTextCell::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Name ? place.text() : QString();
}

QStringList AccessibleTextCell::actionNames() const
{
    return isValid() && !place.text().isEmpty() ? QStringList{pressAction(), toggleAction()}
                                                : QStringList();
}

void AccessibleTextCell::doAction(const QString &actionName)
{
    if (!actionNames().contains(actionName))
        return;
    if (actionName == pressAction())
        emit place.table->doubleClicked(indexOf(place));
    else if (QCheckBox *box = boxOf(place))
        box->animateClick();
    else
        place.table->selectionModel()->select(indexOf(place), QItemSelectionModel::Toggle |
                                                                  QItemSelectionModel::Rows);
}

QStringList AccessibleTextCell::keyBindingsForAction(const QString & /*actionName*/) const
{
    return {};
}

AccessibleBoxCell::AccessibleBoxCell(QWidget *widget, const TablePlace &where)
    : QAccessibleWidget(widget, QAccessible::Cell)
    , AccessibleTableCell(where)
{
}

void *AccessibleBoxCell::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TableCellInterface
               ? static_cast<QAccessibleTableCellInterface *>(this)
               : QAccessibleWidget::interface_cast(type);
}

QString AccessibleBoxCell::text(QAccessible::Text kind) const
{
    const QCheckBox *box = kind == QAccessible::Name ? boxOf(place) : nullptr;
    return box != nullptr ? box->accessibleName() : QAccessibleWidget::text(kind);
}

AccessibleBoxHeader::AccessibleBoxHeader(QWidget *header, const TablePlace &where)
    : QAccessibleWidget(header, QAccessible::ColumnHeader)
    , place(where)
{
}

#include "AccessibleCheckTable.h"

#include "AccessibleCell.h"
#include "QCheckBoxHeader.h"

#include <QTableWidget>

#include <utility>

AccessibleCheckTable::AccessibleCheckTable(QTableWidget *table)
    : QAccessibleWidget(table, QAccessible::Table)
{
}

AccessibleCheckTable::~AccessibleCheckTable()
{
    forgetCells();
}

void *AccessibleCheckTable::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface *>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

QAccessibleInterface *AccessibleCheckTable::childAt(int x, int y) const
{
    const QModelIndex index = table()->indexAt(table()->viewport()->mapFromGlobal(QPoint(x, y)));
    return index.isValid() ? cellAt(index.row(), index.column()) : nullptr;
}

QAccessibleInterface *AccessibleCheckTable::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    const int across = columnCount() + 1;
    const TablePlace place{table(), index / across - 1, index % across - 1};
    const auto *header = qobject_cast<QCheckBoxHeader *>(table()->horizontalHeader());
    if (header != nullptr && place.row < 0 && place.column == header->boxColumn())
        return QAccessible::queryAccessibleInterface(table()->horizontalHeader());
    if (!place.isHeader()) {
        if (QWidget *widget = table()->cellWidget(place.row, place.column))
            return QAccessible::queryAccessibleInterface(widget);
    }
    if (!cells.contains(index))
        cells[index] = QAccessible::registerAccessibleInterface(new AccessibleTextCell(place));
    return QAccessible::accessibleInterface(cells.value(index));
}

int AccessibleCheckTable::childCount() const
{
    return (rowCount() + 1) * (columnCount() + 1);
}

int AccessibleCheckTable::indexOfChild(const QAccessibleInterface *child) const
{
    if (child == nullptr)
        return -1;
    if (const auto *header = qobject_cast<QCheckBoxHeader *>(child->object()))
        return header->boxColumn() + 1;
    auto *const known = const_cast<QAccessibleInterface *>(child);
    if (const QAccessibleTableCellInterface *cell = known->tableCellInterface())
        return (cell->rowIndex() + 1) * (columnCount() + 1) + cell->columnIndex() + 1;
    return cells.key(QAccessible::uniqueId(known), -1);
}

QAccessibleInterface *AccessibleCheckTable::focusChild() const
{
    const QModelIndex current = table()->currentIndex();
    if (!table()->hasFocus())
        return QAccessibleWidget::focusChild();
    return current.isValid() ? cellAt(current.row(), current.column()) : nullptr;
}

QAccessibleInterface *AccessibleCheckTable::cellAt(int row, int column) const
{
    if (row >= rowCount() || column >= columnCount())
        return nullptr;
    return child((row + 1) * (columnCount() + 1) + column + 1);
}

int AccessibleCheckTable::selectedCellCount() const
{
    return table()->selectionModel()->selectedIndexes().size();
}

QList<QAccessibleInterface *> AccessibleCheckTable::selectedCells() const
{
    QList<QAccessibleInterface *> selected;
    for (const QModelIndex &index : table()->selectionModel()->selectedIndexes())
        selected.append(cellAt(index.row(), index.column()));
    return selected;
}

QString AccessibleCheckTable::columnDescription(int column) const
{
    return TablePlace{table(), -1, column}.text();
}

QString AccessibleCheckTable::rowDescription(int /*row*/) const
{
    return {};
}

int AccessibleCheckTable::selectedColumnCount() const
{
    return selectedColumns().size();
}

int AccessibleCheckTable::selectedRowCount() const
{
    return selectedRows().size();
}

int AccessibleCheckTable::columnCount() const
{
    return table()->columnCount();
}

int AccessibleCheckTable::rowCount() const
{
    return table()->rowCount();
}

QList<int> AccessibleCheckTable::selectedColumns() const
{
    QList<int> columns;
    for (const QModelIndex &index : table()->selectionModel()->selectedColumns())
        columns.append(index.column());
    return columns;
}

QList<int> AccessibleCheckTable::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex &index : table()->selectionModel()->selectedRows())
        rows.append(index.row());
    return rows;
}

bool AccessibleCheckTable::isColumnSelected(int column) const
{
    return table()->selectionModel()->isColumnSelected(column, {});
}

bool AccessibleCheckTable::isRowSelected(int row) const
{
    return table()->selectionModel()->isRowSelected(row, {});
}

bool AccessibleCheckTable::selectRow(int row)
{
    if (row < 0 || row >= rowCount())
        return false;
    table()->selectRow(row);
    return true;
}

bool AccessibleCheckTable::unselectRow(int row)
{
    if (row < 0 || row >= rowCount())
        return false;
    table()->selectionModel()->select(table()->model()->index(row, 0),
                                      QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
    return true;
}

// Whole rows are selected, never columns.
bool AccessibleCheckTable::selectColumn(int /*column*/)
{
    return false;
}

bool AccessibleCheckTable::unselectColumn(int /*column*/)
{
    return false;
}

void AccessibleCheckTable::modelChange(QAccessibleTableModelChangeEvent * /*event*/)
{
    forgetCells();
}

void AccessibleCheckTable::forgetCells()
{
    for (const QAccessible::Id id : std::as_const(cells))
        QAccessible::deleteAccessibleInterface(id);
    cells.clear();
}

QTableWidget *AccessibleCheckTable::table() const
{
    return static_cast<QTableWidget *>(widget());
}

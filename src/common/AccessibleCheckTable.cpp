#include "AccessibleCheckTable.h"

#include "QCheckBoxHeader.h"
#include "QUserCheckBox.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QTableWidget>

#include <utility>

namespace {

using Interfaces = QList<QAccessibleInterface *>;

const QCheckBoxHeader *boxHeader(const QTableWidget &table)
{
    return qobject_cast<QCheckBoxHeader *>(table.horizontalHeader());
}

/// The check box in @p row; -1 is the header.
QCheckBox *boxIn(const QTableWidget &table, int row)
{
    const QCheckBoxHeader *header = boxHeader(table);
    if (header == nullptr || row < 0)
        return header != nullptr ? header->findChild<QCheckBox *>() : nullptr;
    const QWidget *widget = table.cellWidget(row, header->boxColumn());
    return widget != nullptr ? widget->findChild<QCheckBox *>() : nullptr;
}

/// Row or column -1 is the header.
class Cell : public QAccessibleInterface,
             public QAccessibleTableCellInterface,
             public QAccessibleActionInterface
{
public:
    Cell(QTableWidget &owner, int rowOfCell, int columnOfCell)
        : view(owner)
        , row(rowOfCell)
        , column(columnOfCell)
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (isHeader())
            return nullptr;
        if (type == QAccessible::TableCellInterface)
            return static_cast<QAccessibleTableCellInterface *>(this);
        return type == QAccessible::ActionInterface
                   ? static_cast<QAccessibleActionInterface *>(this)
                   : nullptr;
    }
    bool isValid() const override { return true; } // deleted with its table
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return table()->window(); }
    QAccessibleInterface *parent() const override { return table(); }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        QAccessibleInterface *box = child(0);
        return box != nullptr && box->rect().contains(x, y) ? box : nullptr;
    }
    QAccessibleInterface *child(int index) const override
    {
        return index == 0 && childCount() > 0
                   ? QAccessible::queryAccessibleInterface(boxIn(view, row))
                   : nullptr;
    }
    int childCount() const override
    {
        const QCheckBoxHeader *header = boxHeader(view);
        return header != nullptr && column == header->boxColumn() && boxIn(view, row) ? 1 : 0;
    }
    int indexOfChild(const QAccessibleInterface *box) const override
    {
        return box != nullptr && box == child(0) ? 0 : -1;
    }
    QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Name || column < 0)
            return {};
        const QTableWidgetItem *item =
            row < 0 ? view.horizontalHeaderItem(column) : view.item(row, column);
        if (item != nullptr)
            return item->text();
        return !isHeader() && childCount() > 0 ? child(0)->text(kind) : QString();
    }
    void setText(QAccessible::Text /*kind*/, const QString & /*text*/) override {}
    QRect rect() const override
    {
        if (!isHeader()) {
            const QRect inside = view.visualRect(index());
            return {view.viewport()->mapToGlobal(inside.topLeft()), inside.size()};
        }
        const QHeaderView *header = view.horizontalHeader();
        if (row >= 0 || column < 0)
            return {header->mapToGlobal(QPoint(0, 0)), QSize(0, 0)};
        return {header->mapToGlobal(QPoint(header->sectionViewportPosition(column), 0)),
                QSize(header->sectionSize(column), header->height())};
    }
    QAccessible::Role role() const override
    {
        if (!isHeader())
            return QAccessible::Cell;
        if (row >= 0)
            return QAccessible::RowHeader;
        return column >= 0 ? QAccessible::ColumnHeader : QAccessible::Pane;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        const QRect shown(view.viewport()->mapToGlobal(QPoint(0, 0)), view.viewport()->size());
        state.invisible = column < 0 || !view.isVisible();
        state.offscreen = !isHeader() && !shown.intersects(rect());
        if (isHeader())
            return state;
        state.focusable = true;
        state.selectable = true;
        state.selected = view.selectionModel()->isSelected(index());
        state.focused = view.hasFocus() && view.currentIndex() == index();
        const QCheckBox *box = boxIn(view, row);
        state.checkable = box != nullptr;
        state.checked = box != nullptr && box->isChecked();
        return state;
    }

    bool isSelected() const override { return state().selected; }
    Interfaces columnHeaderCells() const override
    {
        return column < view.columnCount()
                   ? Interfaces{table()->tableInterface()->cellAt(-1, column)}
                   : Interfaces();
    }
    Interfaces rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return column; }
    int rowIndex() const override { return row; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override
    {
        return QAccessible::queryAccessibleInterface(&view);
    }

    QStringList actionNames() const override
    {
        return view.item(row, column) != nullptr ? QStringList{pressAction(), toggleAction()}
                                                 : QStringList();
    }
    void doAction(const QString &actionName) override
    {
        if (!actionNames().contains(actionName))
            return;
        if (actionName == pressAction())
            emit view.doubleClicked(index());
        else if (QCheckBox *box = boxIn(view, row))
            box->animateClick();
        else
            view.selectionModel()->select(index(),
                                          QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
    }
    QStringList keyBindingsForAction(const QString & /*actionName*/) const override { return {}; }

private:
    bool isHeader() const { return row < 0 || column < 0; }
    QModelIndex index() const { return view.model()->index(row, column); }

    QTableWidget &view;
    int row;
    int column;
};

class Table : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit Table(QTableWidget *table)
        : QAccessibleWidget(table, QAccessible::Table)
        , view(*table)
    {
    }
    ~Table() override { forgetCells(); }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface *>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        const QModelIndex index = view.indexAt(view.viewport()->mapFromGlobal(QPoint(x, y)));
        return index.isValid() ? cellAt(index.row(), index.column()) : nullptr;
    }
    QAccessibleInterface *child(int index) const override
    {
        if (index < 0 || index >= childCount())
            return nullptr;
        const int across = columnCount() + 1;
        if (!cells.contains(index))
            cells[index] = QAccessible::registerAccessibleInterface(
                new Cell(view, index / across - 1, index % across - 1));
        return QAccessible::accessibleInterface(cells.value(index));
    }
    int childCount() const override { return (rowCount() + 1) * (columnCount() + 1); }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        const auto *cell = dynamic_cast<const Cell *>(child);
        return cell != nullptr && cell->table() == this
                   ? numberOf(cell->rowIndex(), cell->columnIndex())
                   : -1;
    }
    QAccessibleInterface *focusChild() const override
    {
        const QModelIndex current = view.currentIndex();
        if (!view.hasFocus())
            return QAccessibleWidget::focusChild();
        return current.isValid() ? cellAt(current.row(), current.column()) : nullptr;
    }

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int column) const override
    {
        return row < rowCount() && column < columnCount() ? child(numberOf(row, column)) : nullptr;
    }
    int selectedCellCount() const override { return selection().selectedIndexes().size(); }
    Interfaces selectedCells() const override
    {
        Interfaces selected;
        for (const QModelIndex &index : selection().selectedIndexes())
            selected.append(cellAt(index.row(), index.column()));
        return selected;
    }
    QString columnDescription(int column) const override
    {
        const QTableWidgetItem *item = view.horizontalHeaderItem(column);
        return item != nullptr ? item->text() : QString();
    }
    QString rowDescription(int /*row*/) const override { return {}; }
    int selectedColumnCount() const override { return selection().selectedColumns().size(); }
    int selectedRowCount() const override { return selection().selectedRows().size(); }
    int columnCount() const override { return view.columnCount(); }
    int rowCount() const override { return view.rowCount(); }
    QList<int> selectedColumns() const override
    {
        QList<int> columns;
        for (const QModelIndex &index : selection().selectedColumns())
            columns.append(index.column());
        return columns;
    }
    QList<int> selectedRows() const override
    {
        QList<int> rows;
        for (const QModelIndex &index : selection().selectedRows())
            rows.append(index.row());
        return rows;
    }
    bool isColumnSelected(int column) const override
    {
        return selection().isColumnSelected(column, {});
    }
    bool isRowSelected(int row) const override { return selection().isRowSelected(row, {}); }
    bool selectRow(int row) override
    {
        view.selectRow(row);
        return isRowSelected(row);
    }
    bool unselectRow(int row) override
    {
        const QModelIndex index = view.model()->index(row, 0);
        selection().select(index, QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
        return index.isValid();
    }
    // Only rows can be selected.
    bool selectColumn(int /*column*/) override { return false; }
    bool unselectColumn(int /*column*/) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent * /*event*/) override { forgetCells(); }

private:
    QItemSelectionModel &selection() const { return *view.selectionModel(); }
    int numberOf(int row, int column) const { return (row + 1) * (columnCount() + 1) + column + 1; }
    void forgetCells()
    {
        for (const QAccessible::Id id : std::as_const(cells))
            QAccessible::deleteAccessibleInterface(id);
        cells.clear();
    }

    QTableWidget &view;
    mutable QHash<int, QAccessible::Id> cells; ///< by child number
};

} // namespace

QAccessibleInterface *accessibleCheckTable(QTableWidget *table)
{
    return new Table(table);
}

QAccessibleInterface *accessibleCellOf(const QWidget &box)
{
    QWidget *above = box.parentWidget();
    while (above != nullptr && qobject_cast<QTableWidget *>(above) == nullptr)
        above = above->parentWidget();
    const auto *table = static_cast<QTableWidget *>(above);
    const QCheckBoxHeader *header = table != nullptr ? boxHeader(*table) : nullptr;
    if (header == nullptr)
        return nullptr;
    const auto *rowBox = qobject_cast<const QUserCheckBox *>(&box);
    return QAccessible::queryAccessibleInterface(above)->tableInterface()->cellAt(
        rowBox != nullptr ? rowBox->tableRow() : -1, header->boxColumn());
}

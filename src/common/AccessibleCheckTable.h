#pragma once

#include <QAccessibleWidget>
#include <QHash>

class QTableWidget;

/// What assistive tools see of a table, check boxes in its cells and in its header included: Qt's
/// own answer leaves those out. Children are numbered as Qt's views do: row by row, the headers
/// first.
class AccessibleCheckTable : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit AccessibleCheckTable(QTableWidget *table);
    ~AccessibleCheckTable() override;

    void *interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override;
    [[nodiscard]] QAccessibleInterface *child(int index) const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *child) const override;
    [[nodiscard]] QAccessibleInterface *focusChild() const override;

    [[nodiscard]] QAccessibleInterface *caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *cellAt(int row, int column) const override;
    [[nodiscard]] int selectedCellCount() const override;
    [[nodiscard]] QList<QAccessibleInterface *> selectedCells() const override;
    [[nodiscard]] QString columnDescription(int column) const override;
    [[nodiscard]] QString rowDescription(int row) const override;
    [[nodiscard]] int selectedColumnCount() const override;
    [[nodiscard]] int selectedRowCount() const override;
    [[nodiscard]] int columnCount() const override;
    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] QList<int> selectedColumns() const override;
    [[nodiscard]] QList<int> selectedRows() const override;
    [[nodiscard]] bool isColumnSelected(int column) const override;
    [[nodiscard]] bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int column) override;
    bool unselectRow(int row) override;
    bool unselectColumn(int column) override;
    void modelChange(QAccessibleTableModelChangeEvent *event) override;

private:
    void forgetCells();
    [[nodiscard]] QTableWidget *table() const;

    mutable QHash<int, QAccessible::Id> cells; ///< those without a widget, by child number
};

#pragma once

#include <QAccessibleWidget>
#include <QPointer>

class QTableWidget;

/// A place in a table that may have check boxes, and what assistive tools ask about it. A row or
/// column of -1 is the header's.
struct TablePlace
{
    QPointer<QTableWidget> table;
    int row = -1;
    int column = -1;

    [[nodiscard]] bool isHeader() const { return row < 0 || column < 0; }
    [[nodiscard]] QAccessibleInterface *accessibleTable() const;
    [[nodiscard]] QString text() const;
    [[nodiscard]] QRect rect() const; ///< on the screen
    [[nodiscard]] QAccessible::Role role() const;
    [[nodiscard]] QAccessible::State state() const;
};

/// The part that all cells below the header have in common.
class AccessibleTableCell : public QAccessibleTableCellInterface
{
public:
    explicit AccessibleTableCell(const TablePlace &where)
        : place(where)
    {
    }

    [[nodiscard]] bool isSelected() const override { return place.state().selected; }
    [[nodiscard]] QList<QAccessibleInterface *> columnHeaderCells() const override;
    [[nodiscard]] QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    [[nodiscard]] int columnIndex() const override { return place.column; }
    [[nodiscard]] int rowIndex() const override { return place.row; }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface *table() const override { return place.accessibleTable(); }

protected:
    TablePlace place;
};

/// A cell of text, or one of the header's. Pressing it is a double click; toggling it ticks or
/// clears the row's box, or selects the row or not where rows have no boxes.
class AccessibleTextCell : public QAccessibleInterface,
                           public AccessibleTableCell,
                           public QAccessibleActionInterface
{
public:
    using AccessibleTableCell::AccessibleTableCell;

    void *interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] bool isValid() const override { return place.table != nullptr; }
    [[nodiscard]] QObject *object() const override { return nullptr; }
    [[nodiscard]] QWindow *window() const override;
    [[nodiscard]] QAccessibleInterface *childAt(int /*x*/, int /*y*/) const override
    {
        return nullptr;
    }
    [[nodiscard]] QAccessibleInterface *parent() const override { return table(); }
    [[nodiscard]] QAccessibleInterface *child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface * /*child*/) const override
    {
        return -1;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text /*kind*/, const QString & /*text*/) override {}
    [[nodiscard]] QRect rect() const override { return place.rect(); }
    [[nodiscard]] QAccessible::Role role() const override { return place.role(); }
    [[nodiscard]] QAccessible::State state() const override { return place.state(); }

    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString &actionName) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString &actionName) const override;
};

/// The widget in a cell that holds the row's box, which is its child.
class AccessibleBoxCell : public QAccessibleWidget, public AccessibleTableCell
{
public:
    AccessibleBoxCell(QWidget *widget, const TablePlace &where);

    void *interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] QAccessibleInterface *parent() const override { return table(); }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::State state() const override { return place.state(); }
};

/// The header, as the cell above the boxes: its child is the box for all of them.
class AccessibleBoxHeader : public QAccessibleWidget
{
public:
    AccessibleBoxHeader(QWidget *header, const TablePlace &where);

    [[nodiscard]] QAccessibleInterface *parent() const override { return place.accessibleTable(); }
    [[nodiscard]] QRect rect() const override { return place.rect(); }

private:
    TablePlace place;
};

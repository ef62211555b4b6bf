#pragma once

class QAccessibleInterface;
class QTableWidget;
class QWidget;

/// What assistive tools see of @p table, the check boxes below and in a QCheckBoxHeader included:
/// Qt's own answer leaves those out. Children are numbered as Qt's views do: row by row, the
/// headers first. Pressing a cell is a double click; toggling it ticks or clears the row's box, or
/// selects the row or not where rows have no boxes. For a factory: QAccessible takes the result.
[[nodiscard]] QAccessibleInterface *accessibleCheckTable(QTableWidget *table);

/// The cell that holds @p box, which is the box of a row, a QUserCheckBox, or that of the header;
/// null if it is in no such table.
[[nodiscard]] QAccessibleInterface *accessibleCellOf(const QWidget &box);

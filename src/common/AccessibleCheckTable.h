#pragma once

class QAccessibleInterface;
class QTableWidget;
class QWidget;

/// Creates the accessible interface of @p table, including check boxes in cells and in a
/// QCheckBoxHeader, which Qt's own leaves out. Children are numbered as in Qt's: row by row,
/// headers first. Pressing a cell is a double click; toggling it ticks or clears the row's check
/// box or, without check boxes, selects the row or not. For a factory: QAccessible takes ownership.
[[nodiscard]] QAccessibleInterface *accessibleCheckTable(QTableWidget *table);

/// The cell that contains @p box, a row's QUserCheckBox or the header's check box; null if it is
/// not in such a table.
[[nodiscard]] QAccessibleInterface *accessibleCellOf(const QWidget &box);

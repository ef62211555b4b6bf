#include "RowTable.h"

#include "PlainToolTip.h"

#include <QFocusEvent>
#include <QHeaderView>
#include <QPainter>
#include <QTextOption>

namespace {

constexpr int pixelsPerRow = 32;

/// The column for the cursor in @p row: @p column if its cell is visible and has text, otherwise
/// the first such column.
int cursorColumn(const QTableWidget &table, int row, int column)
{
    const auto showsText = [&](int i) {
        return table.item(row, i) != nullptr && !table.isColumnHidden(i);
    };
    if (showsText(column))
        return column;
    for (int i = 0; i < table.columnCount(); ++i) {
        if (showsText(i))
            return i;
    }
    return column;
}

} // namespace

RowTable::RowTable(QWidget *parent)
    : CTableWidget(parent)
{
    verticalHeader()->setVisible(false);
    verticalHeader()->setDefaultSectionSize(pixelsPerRow);
    setHorizontalScrollMode(ScrollPerPixel);
    setAlternatingRowColors(true);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setWordWrap(false);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setTabKeyNavigation(false); // Tab leaves the table
    PlainToolTip::installOnItemsOf(*this);
    connect(this, &QTableWidget::currentCellChanged, this, &RowTable::keepCursorOnText);
}

void RowTable::setUpColumns(const std::vector<int> &widths)
{
    const int last = int(widths.size());
    setColumnCount(last + 1);
    for (int column = 0; column < last; ++column)
        setColumnWidth(column, widths[std::size_t(column)]);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setTextElideMode(Qt::ElideRight);
    horizontalHeader()->setHighlightSections(false);
}

void RowTable::focusInEvent(QFocusEvent *event)
{
    CTableWidget::focusInEvent(event);
    const bool byKey =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byKey && currentIndex().isValid() && !selectionModel()->hasSelection())
        selectionModel()->select(currentIndex(),
                                 QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

QModelIndex RowTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    // The base class moves between columns on Home and End, which row selection makes invisible,
    // and may move to a spare row on other keys.
    const int lastRow = nextShownRow(rowCount() - 1, -1);
    const int column = qMax(currentColumn(), 0);
    if (action == MoveHome)
        return model()->index(nextShownRow(0, 1), column);
    const QModelIndex moved = CTableWidget::moveCursor(action, modifiers);
    return action == MoveEnd || moved.row() > lastRow ? model()->index(lastRow, column) : moved;
}

bool RowTable::showsSomething(int row) const
{
    return item(row, columnCount() - 1) != nullptr;
}

int RowTable::nextShownRow(int row, int step) const
{
    while (row >= 0 && row < rowCount() && (isRowHidden(row) || !showsSomething(row)))
        row += step;
    return row;
}

void RowTable::keepCursorOnText()
{
    const QModelIndex cursor = currentIndex();
    if (!cursor.isValid())
        return;
    const int column = cursorColumn(*this, cursor.row(), cursor.column());
    selectionModel()->setCurrentIndex(cursor.sibling(cursor.row(), column),
                                      QItemSelectionModel::NoUpdate);
}

void RowTable::drawHint(const QString &hint, int row)
{
    QRectF area = viewport()->rect();
    if (row < 0)
        row = rowAt(int(area.center().y()));
    if (row >= 0) // rows may differ in colour
        area.moveCenter({area.center().x(), rowViewportPosition(row) + rowHeight(row) / 2.0});
    QTextOption wrapped(Qt::AlignCenter);
    wrapped.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere); // a path may have no blanks
    QPainter(viewport()).drawText(area, hint, wrapped);
}

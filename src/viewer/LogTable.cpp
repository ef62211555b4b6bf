#include "LogTable.h"

#include "LogFile.h"
#include "LogItemDelegate.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

#include <array>

namespace {

constexpr int spareRows = 5;

/// In column order, in pixels.
constexpr std::array<int, LogRows::ColumnCount> columnWidths{160, 65, 150, 370};

} // namespace

LogTable::LogTable(QWidget *parent)
    : RowTable(parent)
{
    setUpColumns({columnWidths.begin(), columnWidths.end() - 1});
    setRowCount(capacity); // after the columns: adding columns moves the cells of all rows
    setItemDelegate(new LogItemDelegate(this));
}

void LogTable::retranslate()
{
    setHorizontalHeaderLabels({QCoreApplication::translate("LogViewer", "Log Timestamp"),
                               QCoreApplication::translate("LogViewer", "Log Level"),
                               QCoreApplication::translate("LogViewer", "Log Source"),
                               QCoreApplication::translate("LogViewer", "Log Message")});
    updateHint();
}

void LogTable::clearLines()
{
    setContents(Contents::Nothing);
    clearContents();
    scrollToTop(); // where the next lines appear
}

std::optional<int> LogTable::fill(const QString &path)
{
    clearLines();
    setRowCount(capacity);
    std::optional<int> lines;
    {
        const ModelSignalBlocker blocker(*this);
        // One line beyond the last row shows that the file has more.
        lines = readLogFile(path, capacity + 1,
                            [this](std::string_view line, int row) { setLine(line, row); });
    }
    if (!lines)
        return std::nullopt;
    setContents(*lines > capacity ? Contents::StartOfFile : Contents::File, qMin(*lines, capacity));
    return lineCount;
}

void LogTable::removeSpareRows()
{
    setRowCount(lineCount + spareRows);
}

void LogTable::setContents(Contents filled, int lines)
{
    contents = filled;
    lineCount = lines;
    updateHint();
}

LogTable::Position LogTable::position() const
{
    Position result{{}, currentRow(), qMax(rowAt(0), 0)};
    const int row = showsSomething(result.currentRow) ? result.currentRow : result.topRow;
    const bool isFound = contents == Contents::LinesFound || contents == Contents::LinesBeingFound;
    if (isFound && showsSomething(row))
        result.foundLine = foundLineAt(*this, row);
    return result;
}

void LogTable::goTo(const Position &position)
{
    if (!position.foundLine) {
        setCurrentRow(position.currentRow);
        scrollToRow(position.topRow);
    } else if (const int row = rowOf(*this, *position.foundLine); row >= 0) {
        setCurrentRow(row);
        scrollTo(model()->index(nextShownRow(row, 1), currentColumn()), PositionAtCenter);
    }
}

void LogTable::placeCursor()
{
    if (hasFocus() && !currentIndex().isValid())
        selectionModel()->setCurrentIndex(model()->index(nextShownRow(0, 1), 0),
                                          QItemSelectionModel::NoUpdate);
}

void LogTable::resetColumnWidths()
{
    horizontalHeader()->setDefaultSectionSize(80);
    for (int column = 0; column < LogRows::ColumnCount; ++column)
        setColumnWidth(column, columnWidths[std::size_t(column)]);
    horizontalHeader()->setStretchLastSection(true);
    setAutoScroll(false); // the cursor may be outside the view
    keepCursorOnText();
    setAutoScroll(true);
}

void LogTable::setLevelHidden(const QString &level, bool hidden)
{
    const int top = rowAt(0);
    // Without updates the header does not lay out all rows for each change, without signals the
    // table is notified only once, and a fixed minimum size saves a query to the style per row.
    QHeaderView *const rows = verticalHeader();
    const bool hadUpdates = rows->updatesEnabled();
    QSignalBlocker blocker(rows);
    rows->setUpdatesEnabled(false);
    rows->setMinimumSectionSize(rows->minimumSectionSize());
    int last = -1;
    for (int row = 0; row < rowCount(); ++row) {
        const QTableWidgetItem *const cell = item(row, LogRows::Level);
        if (cell != nullptr && cell->text() == level) {
            rows->setSectionHidden(row, hidden);
            last = row;
        }
    }
    rows->setMinimumSectionSize(-1);
    rows->setUpdatesEnabled(hadUpdates);
    blocker.unblock();
    if (last < 0)
        return;
    emit rows->sectionResized(last, 0, rows->sectionSize(last));
    updateGeometries(); // updates the scroll bar's range
    scrollToRow(top);
    updateHint();
}

void LogTable::keyPressEvent(QKeyEvent *event)
{
    // In the base class, Ctrl moves the cursor without the selection, which cannot be seen here.
    if (event->key() == Qt::Key_Home || event->key() == Qt::Key_End)
        event->setModifiers(event->modifiers() & ~Qt::ControlModifier);
    RowTable::keyPressEvent(event);
}

void LogTable::paintEvent(QPaintEvent *event)
{
    RowTable::paintEvent(event);
    if (hint.isEmpty())
        return;
    int row = lineCount;
    while (row < rowCount() && isRowHidden(row))
        ++row;
    if (lineCount == 0)
        drawHint(hint);
    else if (row < rowCount())
        drawHint(hint, row);
}

void LogTable::setCurrentRow(int row)
{
    if (showsSomething(row))
        selectionModel()->setCurrentIndex(model()->index(row, 0),
                                          QItemSelectionModel::ClearAndSelect |
                                              QItemSelectionModel::Rows);
}

void LogTable::scrollToRow(int row)
{
    int shownAbove = 0;
    for (int above = 0; above < row; ++above)
        shownAbove += isRowHidden(above) ? 0 : 1;
    verticalScrollBar()->setValue(shownAbove);
}

void LogTable::updateHint()
{
    int hidden = 0;
    if (contents == Contents::LinesFound) {
        for (int row = 0; row < lineCount; ++row)
            hidden += isRowHidden(row) ? 1 : 0;
    }
    if (contents == Contents::StartOfFile)
        hint =
            QCoreApplication::translate("LogViewer", "The first 100,000 lines; the file goes on.");
    else if (contents == Contents::LinesFound && lineCount == 0)
        hint = QCoreApplication::translate(
            "LogViewer", "No line matches. Empty the field and press Enter to see the whole log.");
    else if (hidden > 0)
        hint = QCoreApplication::translate(
            "LogViewer", "%n of the lines found are hidden by levels", nullptr, hidden);
    else
        hint.clear();
    setAccessibleDescription(hint);
    viewport()->update();
}

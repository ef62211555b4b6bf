#include "LogTable.h"

#include "LogItemDelegate.h"
#include "PlainToolTip.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

namespace {

constexpr int lineHeight = 32;

/// In column order, in pixels.
constexpr std::array<int, LogRows::ColumnCount> columnWidths{160, 65, 150, 370};

/// The first row from @p row on, in steps of @p step, that can be seen and shows something.
int nextShownRow(const QTableWidget &table, int row, int step)
{
    while (row >= 0 && row < table.rowCount() &&
           (table.isRowHidden(row) || table.item(row, LogRows::Message) == nullptr))
        row += step;
    return row;
}

/// The column of @p row in which the cursor can be seen: its own if there is a text, else the first
/// that is shown and has one.
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

const std::array<const char *, LogRows::ColumnCount> LogTable::headerTexts{
    QT_TRANSLATE_NOOP("LogViewer", "Log Timestamp"), QT_TRANSLATE_NOOP("LogViewer", "Log Level"),
    QT_TRANSLATE_NOOP("LogViewer", "Log Source"), QT_TRANSLATE_NOOP("LogViewer", "Log Message")};

LogTable::LogTable(QWidget *parent)
    : CTableWidget(parent)
{
    verticalHeader()->setVisible(false);
    verticalHeader()->setDefaultSectionSize(lineHeight);
    setUpColumns();
    setRowCount(capacity); // rows of no columns would all be moved when the columns come
    setHorizontalScrollMode(ScrollPerPixel);
    setAlternatingRowColors(true);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setWordWrap(false);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setItemDelegate(new LogItemDelegate(this));
    PlainToolTip::installOnItemsOf(*this);
    setTabKeyNavigation(false); // Tab leads out of the table
    connect(this, &QTableWidget::currentCellChanged, this, &LogTable::keepCursorOnText);
}

void LogTable::retranslate()
{
    QStringList texts;
    for (const char *text : headerTexts)
        texts.append(QCoreApplication::translate("LogViewer", text));
    setHorizontalHeaderLabels(texts);
    updateHint();
}

void LogTable::clearLines()
{
    setContents(Contents::Nothing);
    clearContents();
    scrollToTop(); // that is where the next lines appear
}

void LogTable::setContents(Contents filled, int lines)
{
    contents = filled;
    lineCount = lines;
    updateHint();
}

LogTable::Place LogTable::place() const
{
    Place place{{}, currentRow(), qMax(rowAt(0), 0)};
    const auto hasLine = [this](int row) { return item(row, LogRows::Message) != nullptr; };
    const int row = hasLine(place.currentRow) ? place.currentRow : place.topRow;
    const bool isFound = contents == Contents::LinesFound || contents == Contents::LinesBeingFound;
    if (isFound && hasLine(row))
        place.foundLine = foundLineAt(*this, row);
    return place;
}

void LogTable::goTo(const Place &place)
{
    if (!place.foundLine) {
        setCurrentRow(place.currentRow);
        scrollToRow(place.topRow);
    } else if (const int row = rowOf(*this, *place.foundLine); row >= 0) {
        setCurrentRow(row);
        scrollTo(model()->index(nextShownRow(*this, row, 1), currentColumn()), PositionAtCenter);
    }
}

void LogTable::placeCursor()
{
    if (hasFocus() && !currentIndex().isValid())
        selectionModel()->setCurrentIndex(model()->index(nextShownRow(*this, 0, 1), 0),
                                          QItemSelectionModel::NoUpdate);
}

void LogTable::resetColumnWidths()
{
    horizontalHeader()->setDefaultSectionSize(80);
    for (int column = 0; column < LogRows::ColumnCount; ++column)
        setColumnWidth(column, columnWidths[static_cast<std::size_t>(column)]);
    horizontalHeader()->setStretchLastSection(true);
    setAutoScroll(false); // the cursor may be out of sight
    keepCursorOnText();
    setAutoScroll(true);
}

void LogTable::setLevelHidden(const QString &level, bool hidden)
{
    const int top = rowAt(0);
    // While its updates are off the header does not place all rows anew for each one of them, the
    // table hears of them all at once, and the style is asked once for the least height of a row.
    QHeaderView *const rows = verticalHeader();
    const bool hadUpdates = rows->updatesEnabled();
    const bool wasBlocked = rows->blockSignals(true);
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
    rows->blockSignals(wasBlocked);
    if (last < 0)
        return;
    emit rows->sectionResized(last, 0, rows->sectionSize(last));
    updateGeometries(); // the scroll bar still has the range of the rows before
    scrollToRow(top);
    updateHint();
}

void LogTable::keyPressEvent(QKeyEvent *event)
{
    // For the base class, Ctrl moves the cursor alone and leaves the selection where it was.
    if (event->key() == Qt::Key_Home || event->key() == Qt::Key_End)
        event->setModifiers(event->modifiers() & ~Qt::ControlModifier);
    CTableWidget::keyPressEvent(event);
}

void LogTable::paintEvent(QPaintEvent *event)
{
    CTableWidget::paintEvent(event);
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

QModelIndex LogTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    // The base class's Home and End move among the columns of a row, which whole-row selection
    // hides; its other moves may end on a spare row.
    const int lastRow = nextShownRow(*this, rowCount() - 1, -1);
    const int column = qMax(currentColumn(), 0);
    if (action == MoveHome)
        return model()->index(nextShownRow(*this, 0, 1), column);
    const QModelIndex moved = CTableWidget::moveCursor(action, modifiers);
    return action == MoveEnd || moved.row() > lastRow ? model()->index(lastRow, column) : moved;
}

void LogTable::setUpColumns()
{
    setColumnCount(LogRows::ColumnCount);
    retranslate();
    for (int column : {LogRows::Timestamp, LogRows::Level, LogRows::Source})
        setColumnWidth(column, columnWidths[static_cast<std::size_t>(column)]);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setTextElideMode(Qt::ElideRight);
    horizontalHeader()->setHighlightSections(false);
}

void LogTable::setCurrentRow(int row)
{
    if (item(row, LogRows::Message) != nullptr)
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

void LogTable::keepCursorOnText()
{
    const QModelIndex cursor = currentIndex();
    if (!cursor.isValid())
        return;
    const int column = cursorColumn(*this, cursor.row(), cursor.column());
    selectionModel()->setCurrentIndex(cursor.sibling(cursor.row(), column),
                                      QItemSelectionModel::NoUpdate);
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

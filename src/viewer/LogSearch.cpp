#include "LogSearch.h"

#include "FreeMemory.h"
#include "LogTable.h"
#include "SearchRun.h"

#include <QDeadlineTimer>
#include <QDebug>
#include <QGuiApplication>
#include <QScopedValueRollback>

#include <chrono>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto longestStep = 20ms; // about one frame; most searches take less

} // namespace

/// Divides work into steps and handles events between them, which keeps the window responsive.
class LogSearch::Steps
{
public:
    explicit Steps(QWidget &busyWidget)
        : widget(busyWidget)
    {
    }
    ~Steps() { widget.unsetCursor(); }
    Steps(const Steps &) = delete;
    Steps &operator=(const Steps &) = delete;

    /// Checks the clock only now and then: each check takes a tenth of the time of placing a line.
    [[nodiscard]] bool isOver() { return ++checks % 32 == 0 && end.hasExpired(); }
    [[nodiscard]] std::chrono::milliseconds timeLeft() const
    {
        return std::chrono::milliseconds(end.remainingTime());
    }
    /// Handles events and begins the next step, if the current one is over.
    void handleEventsIfDue()
    {
        if (!end.hasExpired())
            return;
        widget.setCursor(Qt::BusyCursor); // the work takes more than one step
        QCoreApplication::processEvents();
        end.setRemainingTime(longestStep);
    }

private:
    QWidget &widget;
    QDeadlineTimer end{longestStep};
    unsigned checks = 0;
};

LogSearch::LogSearch(LogTable &logTable, LineSearch search)
    : table(logTable)
    , lineSearch(std::move(search))
{
}

void LogSearch::run(const Query &query)
{
    next = query;
    if (isRunning)
        return; // the active call continues with it
    const QScopedValueRollback running(isRunning, true);
    // Nobody waits for a search after the last window is closed.
    QObject context;
    QObject::connect(qGuiApp, &QGuiApplication::lastWindowClosed, &context, [this] { cancel(); });
    bool done = true;
    while (next) {
        isCancelled = false;
        done = show(*std::exchange(next, std::nullopt));
    }
    if (!done)
        qDebug() << "Failed to execute findstr command.";
    returnFreeMemory();
}

void LogSearch::cancel()
{
    isCancelled = true;
    next.reset();
}

bool LogSearch::show(const Query &query)
{
    Steps steps(*table.viewport());
    if (!clear(steps))
        return true;
    table.setContents(LogTable::Contents::LinesBeingFound);
    // Matches beyond the table's last row cannot be shown.
    SearchRun search(lineSearch, query.keyword, query.path, table.rowCount());
    std::string found;
    std::size_t shown = 0;
    int row = 0;
    while (shown < found.size() || !search.isOver()) {
        if (shown == found.size()) {
            found = search.take(steps.timeLeft());
            shown = 0;
        }
        {
            const ModelSignalBlocker fill(table);
            while (shown < found.size() && !steps.isOver()) {
                const std::string_view piece(&found[shown]);
                table.setLine(piece, row++);
                shown += piece.size() + 1;
            }
        }
        steps.handleEventsIfDue();
        if (isInterrupted())
            return true;
    }
    if (search.hasFailed())
        return false;
    table.setContents(LogTable::Contents::LinesFound, row);
    return true;
}

bool LogSearch::clear(Steps &steps)
{
    table.setContents(LogTable::Contents::Nothing);
    // Clearing all rows at once would take longer than a step.
    for (int row = 0; row < table.rowCount() && !isInterrupted();) {
        {
            const ModelSignalBlocker removal(table);
            for (; row < table.rowCount() && !steps.isOver(); ++row) {
                for (int column = 0; column < LogRows::ColumnCount; ++column)
                    delete table.takeItem(row, column);
            }
        }
        steps.handleEventsIfDue();
    }
    if (isInterrupted())
        return false;
    table.clearLines();
    return true;
}

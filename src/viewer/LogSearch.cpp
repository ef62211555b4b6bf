#include "LogSearch.h"

#include "LogTable.h"
#include "SearchRun.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QScopedValueRollback>

#include <chrono>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto longestStep = 20ms; // about a frame of a screen; a usual search takes less

/// The pointer over a table that is still being filled.
class BusyPointer
{
public:
    explicit BusyPointer(QWidget &target)
        : widget(target)
    {
        widget.setCursor(Qt::BusyCursor);
    }
    ~BusyPointer() { widget.unsetCursor(); }
    BusyPointer(const BusyPointer &) = delete;
    BusyPointer &operator=(const BusyPointer &) = delete;

private:
    QWidget &widget;
};

} // namespace

/// What keeps the window alive: work is done in steps, with the events handled in between.
class LogSearch::Steps
{
public:
    explicit Steps(QWidget &busyWidget)
        : widget(busyWidget)
    {
    }

    /// Looks at the clock now and then, as that takes a tenth of the time of placing a line.
    [[nodiscard]] bool isOver() { return ++questions % 32 == 0 && end.hasExpired(); }
    [[nodiscard]] std::chrono::milliseconds timeLeft() const
    {
        return std::chrono::milliseconds(end.remainingTime());
    }
    /// Handles events if the step is over, and begins the next one.
    void handleEventsInTime()
    {
        if (!end.hasExpired())
            return;
        if (!pointer)
            pointer.emplace(widget);
        QCoreApplication::processEvents();
        end.setRemainingTime(longestStep);
    }

private:
    QWidget &widget;
    std::optional<BusyPointer> pointer; ///< of work that takes more than a step
    QDeadlineTimer end{longestStep};
    unsigned questions = 0;
};

LogSearch::LogSearch(LogTable &logTable, LogRows &logRows, LineSearch search)
    : table(logTable)
    , rows(logRows)
    , lineSearch(std::move(search))
{
}

LogSearch::Outcome LogSearch::run(const Query &query)
{
    next = query;
    if (isRunning)
        return Outcome::TakenOver;
    const QScopedValueRollback running(isRunning, true);
    // Nobody is left to wait for a search once the last window is closed.
    QObject context;
    QObject::connect(qGuiApp, &QGuiApplication::lastWindowClosed, &context, [this] { cancel(); });
    Outcome outcome = Outcome::Cancelled;
    while (next) {
        isCancelled = false;
        outcome = show(*std::exchange(next, std::nullopt));
    }
    return outcome;
}

void LogSearch::cancel()
{
    isCancelled = true;
    next.reset();
}

LogSearch::Outcome LogSearch::show(const Query &query)
{
    Steps steps(*table.viewport());
    if (!clear(steps))
        return Outcome::Cancelled;
    table.setContents(LogTable::Contents::LinesBeingFound);
    // What lies behind the table's last row has nowhere to be shown.
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
                rows.place(piece, row++);
                shown += piece.size() + 1;
            }
        }
        steps.handleEventsInTime();
        if (isInterrupted())
            return Outcome::Cancelled;
    }
    if (search.hasFailed())
        return Outcome::Failed;
    table.setContents(LogTable::Contents::LinesFound, row);
    return Outcome::Done;
}

bool LogSearch::clear(Steps &steps)
{
    table.setContents(LogTable::Contents::Nothing);
    // All at once would take longer than a step.
    for (int row = 0; row < table.rowCount() && !isInterrupted();) {
        {
            const ModelSignalBlocker removal(table);
            for (; row < table.rowCount() && !steps.isOver(); ++row) {
                for (int column = 0; column < LogRows::ColumnCount; ++column)
                    delete table.takeItem(row, column);
            }
        }
        steps.handleEventsInTime();
    }
    if (isInterrupted())
        return false;
    table.clearLines();
    return true;
}

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
    table.setContents(LogTable::Contents::LinesBeingFound);
    // What lies behind the table's last row has nowhere to be shown.
    SearchRun search(lineSearch, query.keyword, query.path, table.rowCount());
    std::optional<BusyPointer> pointer;
    std::vector<std::string> found;
    std::size_t shown = 0;
    int row = 0;
    QDeadlineTimer step(longestStep);
    while (shown < found.size() || !search.isOver()) {
        if (shown == found.size()) {
            found = search.take(std::chrono::milliseconds(step.remainingTime()));
            shown = 0;
        }
        {
            const ModelSignalBlocker fill(table);
            while (shown < found.size() && !step.hasExpired())
                rows.place(found[shown++], row++);
        }
        if (!step.hasExpired())
            continue;
        if (!pointer)
            pointer.emplace(*table.viewport());
        QCoreApplication::processEvents();
        if (isInterrupted())
            return Outcome::Cancelled;
        step.setRemainingTime(longestStep);
    }
    if (search.hasFailed())
        return Outcome::Failed;
    table.setContents(LogTable::Contents::LinesFound, row);
    return Outcome::Done;
}

#include "LogSearch.h"

#include "FreeMemory.h"
#include "LogTable.h"
#include "SearchRun.h"

#include <QDeadlineTimer>
#include <QDebug>
#include <QEventLoop>
#include <QGuiApplication>
#include <QScopedValueRollback>

#include <chrono>
#include <new>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto longestStep = 20ms; // about one frame; most searches take less
constexpr int reserveBytes = 1 << 20;

} // namespace

/// The work on one query, in steps.
class LogSearch::Task
{
public:
    Task(LogTable &logTable, LineSearch search, Query searchQuery)
        : table(logTable)
        , lineSearch(std::move(search))
        , query(std::move(searchQuery))
    {
        table.setContents(LogTable::Contents::Nothing);
    }
    ~Task() { table.viewport()->unsetCursor(); }
    Task(const Task &) = delete;
    Task &operator=(const Task &) = delete;

    /// Works for about one frame. Returns whether the task is done.
    bool step()
    {
        end.setRemainingTime(longestStep);
        if (matches == nullptr && clear())
            start();
        if (matches != nullptr && show()) {
            if (!hasFailed())
                table.setContents(LogTable::Contents::LinesFound, row);
            return true;
        }
        table.viewport()->setCursor(Qt::BusyCursor); // it takes more than one step
        return false;
    }

    /// Whether the search could not be started, or ran out of memory. To be called when done.
    [[nodiscard]] bool hasFailed() const { return outOfMemory || matches->hasFailed(); }

private:
    /// Empties the rows. Returns whether all are empty.
    bool clear()
    {
        const ModelSignalBlocker removal(table);
        for (; row < table.rowCount() && !isStepOver(); ++row) {
            for (int column = 0; column < LogRows::ColumnCount; ++column)
                delete table.takeItem(row, column);
        }
        return row >= table.rowCount();
    }

    void start()
    {
        table.clearLines();
        table.setContents(LogTable::Contents::LinesBeingFound);
        row = 0;
        // Matches beyond the table's last row cannot be shown.
        matches =
            std::make_unique<SearchRun>(lineSearch, query.keyword, query.path, table.rowCount());
    }

    /// Shows matches as they arrive. Returns whether all are shown.
    bool show()
    {
        do {
            if (shown == found.size()) {
                found = matches->take(std::chrono::milliseconds(end.remainingTime()));
                shown = 0;
            }
            const ModelSignalBlocker fill(table);
            try {
                showFound();
            } catch (const std::bad_alloc &) { // leaving the slot would end the program
                reserve.clear();
                outOfMemory = true;
                return true;
            }
            if (shown == found.size() && matches->isOver())
                return true;
        } while (!end.hasExpired());
        return false;
    }

    void showFound()
    {
        while (shown < found.size() && !isStepOver()) {
            const std::string_view piece(&found[shown]);
            table.setLine(piece, row++);
            shown += piece.size() + 1;
        }
    }

    /// Checks the clock only now and then: each check takes a tenth of the time of placing a line.
    bool isStepOver() { return ++checks % 32 == 0 && end.hasExpired(); }

    LogTable &table;
    const LineSearch lineSearch;
    const Query query;
    QDeadlineTimer end; ///< of the current step
    unsigned checks = 0;
    int row = 0;                        ///< the next row to clear or to fill
    std::unique_ptr<SearchRun> matches; ///< null until the rows are empty
    std::string found;                  ///< pieces, each with its terminating zero byte
    std::size_t shown = 0;              ///< number of its bytes that are in the table
    bool outOfMemory = false;
    /// Released when memory runs out, so that the program can handle events after that.
    QByteArray reserve{reserveBytes, Qt::Uninitialized};
};

LogSearch::LogSearch(LogTable &logTable, LineSearch search)
    : table(logTable)
    , lineSearch(std::move(search))
{
    stepTimer.callOnTimeout(&stepTimer, [this] { step(); });
    // Nobody waits for a search after the last window is closed.
    QObject::connect(qGuiApp, &QGuiApplication::lastWindowClosed, &stepTimer, [this] { cancel(); });
}

LogSearch::~LogSearch() = default;

void LogSearch::run(const Query &query)
{
    task = std::make_unique<Task>(table, lineSearch, query);
    stepTimer.start(0);
    if (waiting != nullptr)
        return; // the active call waits for this query, too
    QEventLoop events;
    const QScopedValueRollback waits(waiting, &events);
    step();
    if (stepTimer.isActive())
        events.exec();
    returnFreeMemory();
}

void LogSearch::cancel()
{
    task.reset();
}

void LogSearch::step()
{
    if (task != nullptr && !task->step())
        return;
    stepTimer.stop();
    if (task != nullptr && task->hasFailed())
        qDebug() << "Failed to execute findstr command.";
    task.reset();
    if (waiting != nullptr)
        waiting->quit();
}

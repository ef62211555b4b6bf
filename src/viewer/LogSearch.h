#pragma once

#include "LineSearch.h"

#include <optional>
#include <string>

class LogTable;

/// Searches a log and shows the lines found in a table, while the window stays usable: no step
/// keeps the event loop waiting. GUI thread only.
class LogSearch
{
public:
    struct Query
    {
        std::string keyword;
        QString path;
    };

    /// Fills @p logTable, which must outlive this object. @p search is called on threads of its own
    /// and may outlive it.
    LogSearch(LogTable &logTable, LineSearch search);

    /// Shows what @p query finds in the table, from its first row on, and returns when the search
    /// is over. Events are handled meanwhile. If one of them asks for another search, that call
    /// returns at once, and this one goes on with the new search in place of its own.
    void run(const Query &query);

    /// Makes the call of run() that is there, if there is one, return as soon as it can.
    void cancel();

private:
    class Steps;

    /// False: the search could not be started, or ran out of memory.
    bool show(const Query &query);
    /// Empties the table. False: it was interrupted.
    bool clear(Steps &steps);
    [[nodiscard]] bool isInterrupted() const { return isCancelled || next.has_value(); }

    LogTable &table;
    LineSearch lineSearch;
    std::optional<Query> next; ///< asked for and not begun yet
    bool isRunning = false;
    bool isCancelled = false;
};

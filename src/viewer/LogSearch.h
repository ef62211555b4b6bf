#pragma once

#include "LineSearch.h"

#include <optional>
#include <string>

class LogTable;

/// Searches a log and shows the matches in a table while the window stays responsive. GUI thread
/// only.
class LogSearch
{
public:
    struct Query
    {
        std::string keyword;
        QString path;
    };

    /// Fills @p logTable, which must outlive this object. @p search is called on its own threads
    /// and may outlive this object.
    LogSearch(LogTable &logTable, LineSearch search);

    /// Shows the matches of @p query in the table and returns when the search is over. Handles
    /// events meanwhile. If one of them calls run(), that call returns at once and this one
    /// continues with the new query.
    void run(const Query &query);

    /// Makes an active call of run() return as soon as possible.
    void cancel();

private:
    class Steps;

    /// Returns false if the search could not be started, or ran out of memory.
    bool show(const Query &query);
    /// Empties the table. Returns false if interrupted.
    bool clear(Steps &steps);
    [[nodiscard]] bool isInterrupted() const { return isCancelled || next.has_value(); }

    LogTable &table;
    LineSearch lineSearch;
    std::optional<Query> next; ///< requested, not started yet
    bool isRunning = false;
    bool isCancelled = false;
};

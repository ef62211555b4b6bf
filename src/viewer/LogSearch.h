#pragma once

#include "LineSearch.h"

#include <QTimer>

#include <memory>
#include <string>

class LogTable;
class QEventLoop;

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
    ~LogSearch();
    LogSearch(const LogSearch &) = delete;
    LogSearch &operator=(const LogSearch &) = delete;

    /// Shows the matches of @p query in the table, instead of those of a query in progress, and
    /// returns when the search is over. Handles events meanwhile. If one of them calls run(), that
    /// call returns at once, and this one waits for the new query unless its own is already over.
    void run(const Query &query);

    /// Ends the query in progress; an active call of run() returns soon.
    void cancel();

private:
    class Task;

    void step();

    LogTable &table;
    LineSearch lineSearch;
    std::unique_ptr<Task> task; ///< the query in progress
    /// A timer, so that the search also continues in event loops that handled events enter.
    QTimer stepTimer;
    QEventLoop *waiting = nullptr; ///< the active call of run() waits in it
};

#pragma once

#include "LineSearch.h"

#include <chrono>
#include <memory>
#include <string>

class QThread;

/// One search on its own thread. Its owner takes matches as they arrive. GUI thread only.
class SearchRun
{
public:
    /// Starts @p search, which is stopped after @p limit pieces.
    SearchRun(const LineSearch &search, const std::string &keyword, const QString &path, int limit);
    /// Stops the search. A search that does not end within 20 ms is abandoned and ends by itself.
    ~SearchRun();
    SearchRun(const SearchRun &) = delete;
    SearchRun &operator=(const SearchRun &) = delete;

    /// Waits up to @p timeout for pieces or the end of the search. Returns the pieces found since
    /// the last call, each with its terminating zero byte.
    [[nodiscard]] std::string take(std::chrono::milliseconds timeout);

    /// Whether the search has ended and all pieces were taken.
    [[nodiscard]] bool isOver() const;
    /// Whether the search could not be started or ran out of memory. Final once isOver().
    [[nodiscard]] bool hasFailed() const;

private:
    class Findings;

    std::shared_ptr<Findings> findings; ///< shared with the thread, which may outlive this object
    std::unique_ptr<QThread> thread;
};

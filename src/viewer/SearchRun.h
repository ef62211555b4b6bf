#pragma once

#include "LineSearch.h"

#include <chrono>
#include <memory>
#include <string>

class QThread;

/// One search on a thread of its own. Its owner takes the pieces found as they come. GUI thread
/// only.
class SearchRun
{
public:
    /// Starts @p search, which ends early once it has found @p limit pieces.
    SearchRun(const LineSearch &search, const std::string &keyword, const QString &path, int limit);
    /// Stops the search. One that does not end at once is left behind: it ends on its own, and
    /// nobody waits for it.
    ~SearchRun();
    SearchRun(const SearchRun &) = delete;
    SearchRun &operator=(const SearchRun &) = delete;

    /// Waits for pieces or for the end of the search, @p timeout at most. Returns the pieces found
    /// since the last call, each with the zero byte that ends it.
    [[nodiscard]] std::string take(std::chrono::milliseconds timeout);

    /// The search has ended, and all its pieces were taken.
    [[nodiscard]] bool isOver() const;
    /// The search could not be started, or ran out of memory. Final once the search is over.
    [[nodiscard]] bool hasFailed() const;

private:
    class Findings;

    std::shared_ptr<Findings> findings; ///< the thread's, too, which may outlive this object
    std::unique_ptr<QThread> thread;
};

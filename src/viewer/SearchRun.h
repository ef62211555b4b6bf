#pragma once

#include "LineSearch.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// One search on a thread of its own. Whoever made it takes the pieces found as they come, so that
/// a window stays alive however long a search takes.
class SearchRun
{
public:
    /// Starts @p search, which ends early once it has found @p limit pieces.
    SearchRun(const LineSearch &search, const std::string &keyword, const QString &path, int limit);
    /// Stops the search and waits for its end.
    ~SearchRun();
    SearchRun(const SearchRun &) = delete;
    SearchRun &operator=(const SearchRun &) = delete;

    /// Waits for pieces or for the end of the search, @p timeout at most. Returns the pieces found
    /// since the last call.
    [[nodiscard]] std::vector<std::string> take(std::chrono::milliseconds timeout);

    /// The search has ended, and all its pieces were taken.
    [[nodiscard]] bool isOver() const;
    /// The search could not be started, or ran out of memory. Final once the search is over.
    [[nodiscard]] bool hasFailed() const;
    /// Makes the search end early. Does not wait for that.
    void stop() { stopped = true; }

private:
    void add(const char *piece);
    void end(bool wasDone);

    mutable std::mutex mutex; ///< guards the four below
    std::condition_variable changed;
    std::vector<std::string> pieces;
    bool ended = false;
    bool failed = false;
    int room; ///< pieces that are still wanted

    SearchStop stopped{false};
    std::thread thread;
};

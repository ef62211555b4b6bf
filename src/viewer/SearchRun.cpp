#include "SearchRun.h"

#include <new>
#include <system_error>
#include <utility>

SearchRun::SearchRun(const LineSearch &search, const std::string &keyword, const QString &path,
                     int limit)
    : room(limit)
    , stopped(limit <= 0)
{
    const auto run = [this, search, keyword, path] {
        bool done = false;
        try {
            done = search(
                keyword, path, [this](const char *piece) { add(piece); }, stopped);
        } catch (const std::bad_alloc &) { // would end the program if it left this thread
        }
        end(done);
    };
    try {
        thread = std::thread(run);
    } catch (const std::system_error &) { // too many threads
        end(false);
    }
}

SearchRun::~SearchRun()
{
    stop();
    if (thread.joinable())
        thread.join();
}

std::vector<std::string> SearchRun::take(std::chrono::milliseconds timeout)
{
    std::unique_lock lock(mutex);
    changed.wait_for(lock, timeout, [this] { return ended || !pieces.empty(); });
    return std::exchange(pieces, {});
}

bool SearchRun::isOver() const
{
    const std::lock_guard lock(mutex);
    return ended && pieces.empty();
}

bool SearchRun::hasFailed() const
{
    const std::lock_guard lock(mutex);
    return failed;
}

void SearchRun::add(const char *piece)
{
    const std::lock_guard lock(mutex);
    if (room <= 0)
        return;
    pieces.emplace_back(piece);
    if (--room == 0)
        stopped = true;
    if (pieces.size() == 1)
        changed.notify_one();
}

void SearchRun::end(bool wasDone)
{
    const std::lock_guard lock(mutex);
    ended = true;
    failed = !wasDone;
    changed.notify_one();
}

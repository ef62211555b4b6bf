#include "SearchRun.h"

#include <QThread>

#include <condition_variable>
#include <cstring>
#include <mutex>
#include <new>
#include <utility>

namespace {

constexpr std::chrono::milliseconds stopGracePeriod{20};

} // namespace

/// The matches that the search thread passes on. Any thread.
class SearchRun::Findings
{
public:
    explicit Findings(int limit)
        : stopped(limit <= 0)
        , room(limit)
    {
    }

    void add(const char *piece)
    {
        const std::lock_guard lock(mutex);
        if (room <= 0)
            return;
        const bool isFirst = pieces.empty();
        pieces.append(piece, std::strlen(piece) + 1);
        if (--room == 0)
            stopped = true;
        if (isFirst)
            changed.notify_one();
    }

    void end(bool wasDone)
    {
        const std::lock_guard lock(mutex);
        ended = true;
        failed = !wasDone;
        changed.notify_one();
    }

    std::string take(std::chrono::milliseconds timeout)
    {
        std::unique_lock lock(mutex);
        changed.wait_for(lock, timeout, [this] { return ended || !pieces.empty(); });
        return std::exchange(pieces, {});
    }

    bool isOver() const
    {
        const std::lock_guard lock(mutex);
        return ended && pieces.empty();
    }

    bool hasFailed() const
    {
        const std::lock_guard lock(mutex);
        return failed;
    }

    SearchStop stopped;

private:
    mutable std::mutex mutex; ///< guards the rest
    std::condition_variable changed;
    std::string pieces;
    bool ended = false;
    bool failed = false;
    int room; ///< remaining number of pieces
};

SearchRun::SearchRun(const LineSearch &search, const std::string &keyword, const QString &path,
                     int limit)
    : findings(std::make_shared<Findings>(limit))
    , thread(QThread::create([search, keyword, path, found = findings] {
        bool done = false;
        try {
            done = search(
                keyword, path, [&found](const char *piece) { found->add(piece); }, found->stopped);
        } catch (const std::bad_alloc &) { // leaving the thread would end the program
        }
        found->end(done);
    }))
{
    thread->start();
    if (!thread->isRunning() && !thread->isFinished()) // no resources for a thread
        findings->end(false);
}

SearchRun::~SearchRun()
{
    findings->stopped = true;
    QObject::connect(thread.get(), &QThread::finished, thread.get(), &QObject::deleteLater);
    if (!thread->wait(QDeadlineTimer(stopGracePeriod)))
        (void)thread.release(); // deletes itself when finished
}

std::string SearchRun::take(std::chrono::milliseconds timeout)
{
    return findings->take(timeout);
}

bool SearchRun::isOver() const
{
    return findings->isOver();
}

bool SearchRun::hasFailed() const
{
    return findings->hasFailed();
}

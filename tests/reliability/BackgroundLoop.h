#pragma once

#include <QThread>

#include <atomic>
#include <functional>
#include <memory>
#include <utility>

/// Repeats a function on its own thread, like another program, until its end.
class BackgroundLoop
{
public:
    /// @p act receives the number of the round, from 0.
    explicit BackgroundLoop(std::function<void(int)> act)
        : doing(std::move(act))
        , thread(QThread::create([this] {
            for (int round = 0; !enough; ++round) {
                doing(round);
                rounds = round + 1;
            }
        }))
    {
        thread->start();
    }

    ~BackgroundLoop()
    {
        enough = true;
        thread->wait();
    }

    BackgroundLoop(const BackgroundLoop &) = delete;
    BackgroundLoop &operator=(const BackgroundLoop &) = delete;

    [[nodiscard]] int roundsSoFar() const { return rounds; }

private:
    std::function<void(int)> doing;
    std::atomic<bool> enough{false};
    std::atomic<int> rounds{0};
    std::unique_ptr<QThread> thread;
};

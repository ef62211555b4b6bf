#include "LogLevelRetry.h"

#include "CConfiguration.h"

#include <QElapsedTimer>

#include <algorithm>
#include <utility>

namespace {
// Long enough for another program to finish saving the file.
constexpr qint64 shortestPause = 250; // milliseconds
} // namespace

LogLevelRetry::LogLevelRetry(std::unique_ptr<LogLevelRewrite> failed, QObject *parent)
    : QObject(parent)
    , rewrite(std::move(failed))
{
    pause.setSingleShot(true);
    connect(&pause, &QTimer::timeout, this, &LogLevelRetry::tryStoredLevel);
    pause.start(int(shortestPause));
}

LogLevelRewrite::Outcome LogLevelRetry::apply(int level)
{
    return rewrite->apply(level);
}

LogLevelRewrite::Problem LogLevelRetry::problem() const
{
    return *rewrite->problem();
}

void LogLevelRetry::tryStoredLevel()
{
    QElapsedTimer work;
    work.start();
    const auto before = rewrite->problem();
    const int stored = int(CConfiguration::instance()->logLevel);
    if (rewrite->applyIfSettled(stored) != LogLevelRewrite::Outcome::Failed) {
        emit ended();
        return;
    }
    // Longer than the work on a huge file takes, so that the windows stay responsive.
    pause.start(int(std::max(shortestPause, 4 * work.elapsed())));
    if (rewrite->problem() != before)
        emit problemChanged();
}

#include "moc_LogLevelRetry.cpp"

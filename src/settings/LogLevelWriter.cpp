#include "LogLevelWriter.h"

#include "LogLevelRetry.h"

#include <QEventLoop>
#include <QPointer>

#include <utility>

using Outcome = LogLevelRewrite::Outcome;

bool LogLevelWriter::write(const QString &path, int level)
{
    if (LogLevelRetry *retry = retries.value(path))
        return retry->apply(level) == Outcome::Done;
    auto rewrite = std::make_unique<LogLevelRewrite>(path);
    const Outcome outcome = rewrite->apply(level);
    if (outcome == Outcome::Failed)
        start(path, std::move(rewrite));
    return outcome == Outcome::Done;
}

void LogLevelWriter::waitForRetry(const QString &path)
{
    const QPointer<LogLevelRetry> retry = retries.value(path);
    if (retry == nullptr)
        return;
    // One loop for all rounds: entering another loop would drop a pending request to quit.
    QEventLoop events;
    connect(retry.data(), &QObject::destroyed, &events, &QEventLoop::quit);
    events.exec();
    if (retry != nullptr)
        end(path); // the program is quitting
}

std::optional<LogLevelRewrite::Problem> LogLevelWriter::retryProblem(const QString &path) const
{
    const LogLevelRetry *const retry = retries.value(path);
    return retry != nullptr ? std::optional(retry->problem()) : std::nullopt;
}

void LogLevelWriter::start(const QString &path, std::unique_ptr<LogLevelRewrite> rewrite)
{
    auto *const retry = new LogLevelRetry(std::move(rewrite), this);
    retries.insert(path, retry);
    connect(retry, &LogLevelRetry::problemChanged, this, [this, path] { emit retryChanged(path); });
    connect(retry, &LogLevelRetry::ended, this, [this, path] { end(path); });
    emit retryChanged(path);
}

void LogLevelWriter::end(const QString &path)
{
    LogLevelRetry *const retry = retries.take(path);
    if (retry == nullptr)
        return;
    retry->deleteLater();
    emit retryChanged(path);
}

#include "moc_LogLevelWriter.cpp"

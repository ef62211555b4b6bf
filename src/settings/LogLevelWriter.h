#pragma once

#include "LogLevelRewrite.h"

#include <QHash>
#include <QObject>

#include <memory>
#include <optional>

class LogLevelRetry;

/// Sets the level in properties files and keeps a retry for each file in which that failed. GUI
/// thread.
class LogLevelWriter : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Sets @p level in the file at @p path and returns whether that succeeded. If it fails
    /// although the file can be read, a retry is started, which writes the hub's level.
    [[nodiscard]] bool write(const QString &path, int level);

    /// Handles events until no retry runs for @p path or the program ends, which ends the retry.
    /// This object may be destroyed meanwhile.
    void waitForRetry(const QString &path);

    /// The problem of the retry for @p path; nullopt if none is running.
    [[nodiscard]] std::optional<LogLevelRewrite::Problem> retryProblem(const QString &path) const;

signals:
    /// The retry for @p path has started, met another problem, or ended.
    void retryChanged(const QString &path);

private:
    void start(const QString &path, std::unique_ptr<LogLevelRewrite> rewrite);
    void end(const QString &path);

    QHash<QString, LogLevelRetry *> retries; ///< children of this
};

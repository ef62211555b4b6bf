#pragma once

#include "LogLevelRewrite.h"

#include <QHash>
#include <QObject>

#include <memory>
#include <optional>

class LogLevelRetry;

/// Sets the level in properties files and keeps the retries of those in which that failed, one for
/// each path. GUI thread.
class LogLevelWriter : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Sets @p level in the file at @p path. If that fails although the file can be read, a retry
    /// puts the stored level back.
    [[nodiscard]] bool write(const QString &path, int level);

    /// Delivers events until no retry runs for @p path, or until the program ends, which ends the
    /// retry. This object may be gone when it returns.
    void waitForRetry(const QString &path);

    /// What the retry of @p path meets; nothing while none runs.
    [[nodiscard]] std::optional<LogLevelRewrite::Problem> retriedFor(const QString &path) const;

signals:
    /// The retry of @p path has begun, met another problem or ended.
    void retryChanged(const QString &path);

private:
    void start(const QString &path, std::unique_ptr<LogLevelRewrite> rewrite);
    void end(const QString &path);

    QHash<QString, LogLevelRetry *> retries; ///< children of this
};

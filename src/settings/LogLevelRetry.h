#pragma once

#include "LogLevelRewrite.h"

#include <QObject>
#include <QTimer>

#include <memory>

/// Retries to write the hub's level to a properties file after a failure, in rounds from the event
/// loop, until both level lines are replaced or the file becomes unreadable. GUI thread.
class LogLevelRetry : public QObject
{
    Q_OBJECT

public:
    /// Continues @p failed, which has failed once. The first round follows after 250 ms.
    LogLevelRetry(std::unique_ptr<LogLevelRewrite> failed, QObject *parent);

    /// Tries @p level now, between two rounds. The rounds continue in any case.
    LogLevelRewrite::Outcome apply(int level);

    [[nodiscard]] LogLevelRewrite::Problem problem() const;

signals:
    /// The reason for the failure has changed.
    void problemChanged();
    /// The last round has finished.
    void ended();

private:
    void tryStoredLevel();

    std::unique_ptr<LogLevelRewrite> rewrite;
    QTimer pause;
};

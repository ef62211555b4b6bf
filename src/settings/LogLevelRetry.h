#pragma once

#include "LogLevelRewrite.h"

#include <QObject>
#include <QTimer>

#include <memory>

/// Puts the stored level, which is the hub's, back into a properties file in which a level could
/// not be set. Tries in rounds, from the event loop, until both level lines were replaced or the
/// file can no longer be read. GUI thread.
class LogLevelRetry : public QObject
{
    Q_OBJECT

public:
    /// Goes on with @p rewrite, which has failed once; starts by itself.
    LogLevelRetry(std::unique_ptr<LogLevelRewrite> rewrite, QObject *parent);

    /// Tries @p level now, between two rounds; these go on whatever comes of it.
    LogLevelRewrite::Outcome apply(int level);

    [[nodiscard]] LogLevelRewrite::Problem problem() const;

signals:
    /// Another problem keeps the level from being set.
    void problemChanged();
    /// There are no more rounds.
    void ended();

private:
    void tryStoredLevel();

    std::unique_ptr<LogLevelRewrite> rewrite;
    QTimer pause;
};

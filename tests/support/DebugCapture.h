#pragma once

#include <QStringList>

/// Keeps what is written to Qt's message output while it lives, from any thread, in order, instead
/// of printing it. One at a time.
class DebugCapture
{
public:
    DebugCapture();
    ~DebugCapture();
    DebugCapture(const DebugCapture &) = delete;
    DebugCapture &operator=(const DebugCapture &) = delete;

    /// The lines so far, as qDebug() composed them (a streamed QString stands in quotes).
    [[nodiscard]] QStringList lines() const;
    /// The lines so far, which are forgotten.
    QStringList take();
    [[nodiscard]] bool contains(const QString &text) const;
};

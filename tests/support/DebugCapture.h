#pragma once

#include <QStringList>

/// Captures Qt's message output from all threads, in order, while it exists. One at a time.
class DebugCapture
{
public:
    DebugCapture();
    ~DebugCapture();
    DebugCapture(const DebugCapture &) = delete;
    DebugCapture &operator=(const DebugCapture &) = delete;

    /// The lines so far, as formatted by qDebug() (streamed strings are quoted).
    [[nodiscard]] QStringList lines() const;
    /// Returns the lines so far and clears them.
    QStringList take();
    [[nodiscard]] bool contains(const QString &text) const;
};

#pragma once

#include <QtGlobal>

/// Measures the peak memory use of this process from construction on.
class MemoryPeak
{
public:
    MemoryPeak();

    /// The peak in bytes beyond the initial use; 0 in sanitized builds.
    [[nodiscard]] qint64 growth() const;

private:
    qint64 before;
};

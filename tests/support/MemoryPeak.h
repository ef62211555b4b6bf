#pragma once

#include <QtGlobal>

/// What this process takes of the memory from here on.
class MemoryPeak
{
public:
    MemoryPeak();

    /// Bytes that it has taken at most, beyond those that it had in the beginning. Under a
    /// sanitizer, which takes its own share, 0.
    [[nodiscard]] qint64 growth() const;

private:
    qint64 before;
};

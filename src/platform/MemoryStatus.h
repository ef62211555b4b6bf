#pragma once

#include <QtGlobal>

#include <optional>

/// The physical memory of this machine.
struct MemoryStatus
{
    quint32 load = 0;      ///< in use, percent
    quint64 total = 0;     ///< bytes
    quint64 available = 0; ///< bytes that programs can have without swapping
};

/// Nothing: the system does not tell. Any thread.
[[nodiscard]] std::optional<MemoryStatus> memoryStatus();

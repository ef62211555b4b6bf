#pragma once

#include <QtGlobal>

#include <optional>

/// The physical memory.
struct MemoryStatus
{
    quint32 load = 0;      ///< percent in use
    quint64 total = 0;     ///< bytes
    quint64 available = 0; ///< bytes available without swapping
};

/// Returns nullopt if unavailable. Any thread.
[[nodiscard]] std::optional<MemoryStatus> memoryStatus();

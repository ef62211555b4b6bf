#pragma once

#include <QByteArray>

struct MemoryStatus;

/// The memory's load in percent, its size and what is available in whole MiB, rounded down.
[[nodiscard]] QByteArray memoryReport(const MemoryStatus &status);

/// A memory module's three lines; the part number stands as it is given.
[[nodiscard]] QByteArray moduleReport(const QByteArray &partNumber, qint32 capacity, qint32 speed);

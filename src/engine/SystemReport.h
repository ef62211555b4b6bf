#pragma once

#include <QByteArray>

struct MemoryStatus;

/// Memory load in percent; total and available memory in whole MiB, rounded down.
[[nodiscard]] QByteArray memoryReport(const MemoryStatus &status);

/// The three lines of a memory module: @p partNumber as given, @p capacity in Kb, @p speed in MHz.
[[nodiscard]] QByteArray moduleReport(const QByteArray &partNumber, qint32 capacity, qint32 speed);

#include "SystemReport.h"

#include "MemoryStatus.h"

namespace {

constexpr quint64 mebibyte = 1'048'576;

} // namespace

QByteArray memoryReport(const MemoryStatus &status)
{
    return "Memory Load: " + QByteArray::number(status.load) +
           "%\nTotal Physical Memory: " + QByteArray::number(status.total / mebibyte) +
           " MB\nAvailable Physical Memory: " + QByteArray::number(status.available / mebibyte) +
           " MB\n";
}

QByteArray moduleReport(const QByteArray &partNumber, qint32 capacity, qint32 speed)
{
    return "PartNumber: " + partNumber + "\nCapacity: " + QByteArray::number(capacity) +
           " Kb\nSpeed: " + QByteArray::number(speed) + " MHz\n";
}

#include "MemoryStatus.h"

#include "linux/LinuxSeams.h"

#include <QFile>
#include <QList>

#include <algorithm>

namespace {

/// The value in bytes of a line such as "MemTotal: 24683560 kB" in @p table.
std::optional<quint64> bytesOf(const char *name, const QByteArray &table)
{
    const QByteArray label = QByteArray(name) + ':';
    for (const QByteArray &line : table.split('\n')) {
        if (!line.startsWith(label))
            continue;
        bool isNumber = false;
        const QByteArray number = line.mid(label.size()).simplified().split(' ').first();
        const quint64 kilobytes = number.toULongLong(&isNumber);
        if (isNumber)
            return kilobytes * 1024;
    }
    return {};
}

} // namespace

std::optional<MemoryStatus> memoryStatus()
{
    return memoryStatusFrom();
}

std::optional<MemoryStatus> memoryStatusFrom(const QString &memInfo)
{
    QFile file(memInfo);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray table = file.readAll();
    const std::optional<quint64> total = bytesOf("MemTotal", table);
    const std::optional<quint64> available = bytesOf("MemAvailable", table);
    if (!total || *total == 0 || !available)
        return {};
    const quint64 free = std::min(*available, *total); // containers report the host's number
    return MemoryStatus{quint32((*total - free) * 100 / *total), *total, *available};
}

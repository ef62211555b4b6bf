#include "MemoryPeak.h"

#include "Machine.h"

#include <QFile>

namespace {

/// A value from /proc/self/status, in bytes.
qint64 figure(const QByteArray &name)
{
    QFile file("/proc/self/status");
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read the memory use");
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.mid(name.size()).simplified().split(' ').first().toLongLong() * 1024;
    }
    qFatal("/proc/self/status has no %s", name.constData());
}

} // namespace

MemoryPeak::MemoryPeak()
    : before(figure("VmRSS:"))
{
    QFile file("/proc/self/clear_refs");
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write("5") != 1)
        qFatal("cannot reset the peak memory use");
}

qint64 MemoryPeak::growth() const
{
    return isSanitized() ? 0 : figure("VmHWM:") - before;
}

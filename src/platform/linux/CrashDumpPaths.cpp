#include "CrashDumpPaths.h"

#include "SharedFile.h"
#include "linux/LinuxSeams.h"

#include <QDateTime>
#include <QDirIterator>

namespace {

/// kdump's newest dump that may be read: a vmcore in a folder named by the time, or one named
/// dump.TIME. The kernel's log beside it, "vmcore-dmesg.txt" or "dmesg.TIME", is none.
QString newestKernelDump(const QString &crashes)
{
    QString newest;
    QDateTime newestTime;
    QDirIterator walk(crashes, {QStringLiteral("vmcore*"), QStringLiteral("dump.*")},
                      QDir::Files | QDir::NoSymLinks | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        const QFileInfo info = walk.fileInfo();
        if (info.fileName().startsWith(QLatin1String("vmcore-dmesg")))
            continue;
        const QDateTime time = info.lastModified();
        if ((newest.isEmpty() || time > newestTime) && isReadable(path)) {
            newest = path;
            newestTime = time;
        }
    }
    return newest;
}

} // namespace

CrashDumpPaths crashDumpPaths()
{
    return crashDumpPathsFrom();
}

CrashDumpPaths crashDumpPathsFrom(const QString &crashes, const QString &kernelLogs)
{
    const QString kernelDump = newestKernelDump(crashes);
    // systemd-pstore names what it saved dmesg-…, and the whole put together dmesg.txt.
    return {kernelDump, kernelDump, kernelLogs, QStringLiteral("dmesg"), true};
}

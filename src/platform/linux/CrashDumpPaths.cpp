#include "CrashDumpPaths.h"

#include "SharedFile.h"
#include "linux/LinuxSeams.h"

#include <QDateTime>
#include <QDirIterator>

namespace {

/// The newest readable dump of kdump: a "vmcore" file or "dump.TIME". The kernel logs beside it,
/// "vmcore-dmesg.txt" and "dmesg.TIME", are not dumps.
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
    // systemd-pstore saves files "dmesg-…" and their concatenation "dmesg.txt".
    return {kernelDump, kernelDump, kernelLogs, QStringLiteral("dmesg"), true};
}

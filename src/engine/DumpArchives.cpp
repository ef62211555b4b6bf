#include "DumpArchives.h"

#include "CrashDumpPaths.h"
#include "EngineLog.h"
#include "SharedFile.h"
#include "ZipArchive.h"

#include <QDateTime>
#include <QDebug>
#include <QDirIterator>
#include <QFile>

#include <algorithm>
#include <vector>

namespace {

void addClientDumps(ZipArchive &archive, const QString &folder)
{
    QDirIterator walk(folder, QDir::Files | QDir::NoSymLinks | QDir::NoDotAndDotDot);
    while (walk.hasNext()) {
        const QString path = walk.next();
        if (walk.fileName().contains(QLatin1String(".dmp")))
            addDump(archive, walk.fileName(), path);
    }
}

} // namespace

void addDump(ZipArchive &archive, const QString &entryName, const QString &path)
{
    if (QFile::exists(path))
        archive.addFile(entryName, path);
    else
        qCWarning(engineLog) << "dump vanished:" << path;
}

QStringList minidumps(const CrashDumpPaths &locations)
{
    struct Dump
    {
        QDateTime modified;
        QString path;
    };

    std::vector<Dump> found;
    QDirIterator walk(locations.minidumps,
                      QDir::Files | QDir::AllDirs | QDir::NoSymLinks | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        if (!walk.fileName().contains(locations.minidumpNamePart))
            continue;
        if (locations.unreadableIsMissing && !isReadable(path))
            continue;
        found.push_back({walk.fileInfo().lastModified(), path});
    }
    // The names contain the time too, which orders files of the same second.
    std::sort(found.begin(), found.end(), [](const Dump &a, const Dump &b) {
        return a.modified != b.modified ? a.modified > b.modified : a.path > b.path;
    });
    QStringList paths;
    for (const Dump &dump : found)
        paths.append(dump.path);
    return paths;
}

bool kernelDumpReadable(const CrashDumpPaths &locations)
{
    return !locations.kernelDumpTestPath.isEmpty() && isReadable(locations.kernelDumpTestPath);
}

void writeSystemDumps(const QString &zipPath, const CrashDumpPaths &locations, bool withKernelDump,
                      const ProgressSink &progress)
{
    ZipArchive archive(zipPath, progress);
    if (withKernelDump)
        addDump(archive, locations.kernelDump, locations.kernelDump);
    else
        qDebug() << "蓝屏日志文件Memory.dmp不存在";
    const QStringList small = minidumps(locations);
    if (small.isEmpty())
        qDebug() << "蓝屏日志文件Minidumps不存在";
    else
        addDump(archive, small.first(), small.first());
    archive.close();
}

void writeClientDumps(const QString &zipPath, const QString &folder, const ProgressSink &progress)
{
    ZipArchive archive(zipPath, progress);
    if (!folder.isEmpty()) // an empty path would be the working directory
        addClientDumps(archive, folder);
    archive.close();
}

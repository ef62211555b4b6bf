#include "ZipArchive.h"

#include "EngineLog.h"

#include <QFile>
#include <QFileInfo>

#include <private/qzipwriter_p.h>

#include <new>
#include <utility>

namespace {

QByteArray contentsOf(const QString &path, qint64 expected)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(engineLog) << "cannot read" << path << file.errorString();
        return {};
    }
    QByteArray contents = file.read(expected);
    if (contents.size() < expected)
        qCWarning(engineLog) << "read only" << contents.size() << "of" << expected
                             << "bytes:" << path;
    return contents;
}

} // namespace

ZipArchive::ZipArchive(const QString &zipPath, ProgressSink sink, const ZipLimits &most)
    : progress(std::move(sink))
    , limits(most)
    , target(zipPath)
{
    if (target.isOpen())
        writer = std::make_unique<QZipWriter>(&target);
}

ZipArchive::~ZipArchive()
{
    close();
}

void ZipArchive::addFile(const QString &entryName, const QString &filePath,
                         std::function<void()> packed)
{
    entries.push_back({entryName, filePath, QFileInfo(filePath).size(), std::move(packed)});
}

void ZipArchive::write()
{
    for (const Entry &entry : std::exchange(entries, {})) {
        if (writer != nullptr && !target.hasFailed())
            pack(entry);
        if (entry.packed)
            entry.packed();
    }
}

bool ZipArchive::close()
{
    write();
    if (writer != nullptr)
        writer->close();
    writer.reset();
    return target.complete();
}

void ZipArchive::pack(const Entry &entry)
{
    if (entry.size > limits.entryBytes)
        qCWarning(engineLog) << "too large for the zip, left empty:" << entry.path << entry.size
                             << "bytes";
    try {
        const QByteArray contents =
            entry.size > limits.entryBytes ? QByteArray() : contentsOf(entry.path, entry.size);
        if (!hasRoomFor(entry.name, contents.size()))
            return;
        writer->addFile(entry.name, contents); // needs about as much memory again
        ++packedEntries;
        if (progress)
            progress(contents.size());
    } catch (const std::bad_alloc &) {
        qCWarning(engineLog) << "no memory, left out of the zip:" << entry.path;
    }
}

bool ZipArchive::hasRoomFor(const QString &entryName, qint64 size) const
{
    // Twice the name and a generous margin stand for the headers, here and in the directory.
    const qint64 overhead = 2 * entryName.toUtf8().size() + 256;
    const qint64 directory = qint64(packedEntries + 1) * 1024;
    const bool fits =
        packedEntries < limits.entries &&
        target.pos() + size + size / 1024 + overhead + directory < limits.archiveBytes;
    if (!fits)
        qCWarning(engineLog) << "no room in the zip, left out:" << entryName << size << "bytes";
    return fits;
}

#include "ZipArchive.h"

#include "EngineLog.h"

#include <QFile>
#include <QFileInfo>

#include <private/qzipwriter_p.h>

#include <new>
#include <numeric>
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

qint64 bytesOf(const std::vector<FileToPack> &files)
{
    return std::accumulate(files.begin(), files.end(), qint64(0),
                           [](qint64 bytes, const FileToPack &file) { return bytes + file.size; });
}

/// Whether @p files stay within @p limits even if none of them shrinks.
bool fitWithin(const ZipLimits &limits, const std::vector<FileToPack> &files)
{
    constexpr qint64 headers = 1024; // per entry, without names: a generous margin
    qint64 sum = 0;
    for (const FileToPack &file : files) {
        if (file.size > limits.entryBytes)
            return false;
        sum += file.size + file.size / 1024 + 2 * qint64(file.name.toUtf8().size()) + headers;
    }
    return files.size() <= limits.entries && sum <= limits.archiveBytes;
}

} // namespace

ZipArchive::ZipArchive(const QString &zipPath, ProgressSink sink, const ZipLimits &most)
    : progress(std::move(sink))
    , limits(most)
    , target(zipPath)
{
}

ZipArchive::~ZipArchive()
{
    close();
}

void ZipArchive::addFile(const QString &entryName, const QString &filePath,
                         std::function<void()> packed)
{
    files.push_back({entryName, filePath, QFileInfo(filePath).size(), std::move(packed)});
}

void ZipArchive::write()
{
    if (std::exchange(written, true))
        return;
    if (progress.expect)
        progress.expect(bytesOf(files));
    if (target.isOpen() && fitWithin(limits, files))
        writer = std::make_unique<QZipWriter>(&target);
    else if (target.isOpen())
        writeLargeZip(files, target, progress);
    for (const FileToPack &file : files) {
        if (writer != nullptr && !target.hasFailed())
            pack(file);
        if (file.packed)
            file.packed();
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

void ZipArchive::pack(const FileToPack &file)
{
    try {
        const QByteArray contents = contentsOf(file.path, file.size);
        writer->addFile(file.name, contents); // needs about the same memory again
        if (progress.advance)
            progress.advance(contents.size());
    } catch (const std::bad_alloc &) {
        qCWarning(engineLog) << "out of memory, left out of the zip:" << file.path;
    }
}

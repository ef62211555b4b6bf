#include "ZipArchive.h"

#include <QDebug>

#include <private/qzipwriter_p.h>

#include <new>

namespace {

QByteArray contentsOf(const QString &path, qint64 most)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qDebug() << "cannot read" << path << file.errorString();
        return {};
    }
    if (file.size() > most) {
        qDebug() << "too large for the zip, left empty:" << path << file.size() << "bytes";
        return {};
    }
    const qint64 expected = file.size();
    QByteArray contents = file.readAll();
    if (contents.size() < expected)
        qDebug() << "read only" << contents.size() << "of" << expected << "bytes:" << path;
    return contents;
}

} // namespace

ZipArchive::ZipArchive(const QString &zipPath, const ZipLimits &most)
    : limits(most)
    , target(zipPath)
{
    // Unbuffered: each write shows at once whether the disk took it.
    if (target.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        writer = std::make_unique<QZipWriter>(&target);
    else
        qDebug() << "cannot write zip" << zipPath << target.errorString();
}

ZipArchive::~ZipArchive()
{
    close();
}

void ZipArchive::addFile(const QString &entryName, const QString &filePath)
{
    if (writer == nullptr || target.failed)
        return;
    try {
        const QByteArray contents = contentsOf(filePath, limits.entryBytes);
        if (!hasRoomFor(entryName, contents.size()))
            return;
        writer->addFile(entryName, contents); // needs about as much memory again
        ++entries;
    } catch (const std::bad_alloc &) {
        qDebug() << "no memory, left out of the zip:" << filePath;
    }
}

bool ZipArchive::close()
{
    if (writer == nullptr)
        return false;
    writer->close();
    writer.reset();
    target.close();
    if (target.failed) {
        qDebug() << "zip not written:" << target.fileName() << target.failure;
        target.remove();
    }
    return !target.failed;
}

bool ZipArchive::hasRoomFor(const QString &entryName, qint64 size) const
{
    // Twice the name and a generous margin stand for the headers, here and in the directory.
    const qint64 overhead = 2 * entryName.toUtf8().size() + 256;
    const qint64 directory = qint64(entries + 1) * 1024;
    const bool fits =
        entries < limits.entries &&
        target.pos() + size + size / 1024 + overhead + directory < limits.archiveBytes;
    if (!fits)
        qDebug() << "no room in the zip, left out:" << entryName << size << "bytes";
    return fits;
}

qint64 ZipArchive::Target::writeData(const char *data, qint64 length)
{
    // A disk that takes a part says only when it is given the rest what is wrong.
    qint64 written = 0;
    for (qint64 more = length; more > 0 && !failed; more = length - written) {
        const qint64 taken = QFile::writeData(data + written, more);
        if (taken > 0) {
            written += taken;
        } else {
            failed = true;
            failure = errorString();
        }
    }
    return written;
}

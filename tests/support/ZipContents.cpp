#include "ZipContents.h"

#include <QFile>

#include <private/qzipreader_p.h>

namespace {

/// The end record alone, which the reader does not take for a zip.
bool isEmptyZip(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) &&
           file.readAll() == QByteArray("PK\5\6") + QByteArray(18, '\0');
}

} // namespace

QMap<QString, QByteArray> zipContents(const QString &path)
{
    if (isEmptyZip(path))
        return {};
    QZipReader reader(path);
    // The reader says of a file that breaks off nothing but that it has no entries.
    const auto entries = reader.fileInfoList();
    if (!reader.isReadable() || reader.status() != QZipReader::NoError || entries.isEmpty())
        return {{QStringLiteral("not a zip"), QByteArray()}};
    QMap<QString, QByteArray> contents;
    for (const QZipReader::FileInfo &entry : entries) {
        // The reader lists names without the slash that some begin with, but finds them with it,
        // and takes their bytes for the system's encoding when it looks for them.
        const QString name = QString::fromLocal8Bit(entry.filePath.toUtf8());
        QByteArray data = reader.fileData(name);
        if (data.isEmpty())
            data = reader.fileData(QLatin1Char('/') + name);
        contents.insert(entry.filePath, data);
    }
    return contents;
}

QStringList zipEntryNames(const QString &path)
{
    if (isEmptyZip(path))
        return {};
    QZipReader reader(path);
    QStringList names;
    for (const QZipReader::FileInfo &entry : reader.fileInfoList())
        names.append(entry.filePath);
    return names;
}

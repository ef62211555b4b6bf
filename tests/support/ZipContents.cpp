#include "ZipContents.h"

#include <QFile>

#include <private/qzipreader_p.h>

#include <zip.h>

namespace {

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Only an end record, which the reader does not accept as a zip.
bool isEmptyZip(const QString &path)
{
    return QFile(path).size() == 22 && bytesOf(path) == QByteArray("PK\5\6") + QByteArray(18, '\0');
}

/// A zip whose first entry needs Zip64, which Qt's reader does not support.
bool isLargeZip(const QString &path)
{
    constexpr char zip64 = 45;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(5).endsWith(zip64);
}

/// Calls @p take with the name and contents of each entry of such a zip. Returns false if it is not
/// one.
template <typename Take>
bool readLargeZip(const QString &path, const Take &take)
{
    const QByteArray bytes = bytesOf(path);
    zip_source_t *const source =
        zip_source_buffer_create(bytes.constData(), zip_uint64_t(bytes.size()), 0, nullptr);
    zip_t *const archive = zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
    if (archive == nullptr) {
        zip_source_free(source);
        return false;
    }
    for (zip_uint64_t i = 0; i < zip_uint64_t(zip_get_num_entries(archive, 0)); ++i) {
        zip_stat_t entry;
        zip_file_t *const file = zip_stat_index(archive, i, ZIP_FL_ENC_RAW, &entry) == 0
                                     ? zip_fopen_index(archive, i, 0)
                                     : nullptr;
        if (file == nullptr) {
            zip_discard(archive);
            return false;
        }
        QByteArray contents(int(entry.size), Qt::Uninitialized);
        contents.resize(int(zip_fread(file, contents.data(), entry.size)));
        zip_fclose(file);
        take(QString::fromUtf8(entry.name), contents);
    }
    zip_discard(archive);
    return true;
}

const QMap<QString, QByteArray> noZip{{"not a zip", QByteArray()}};

} // namespace

QMap<QString, QByteArray> zipContents(const QString &path)
{
    QMap<QString, QByteArray> contents;
    if (isEmptyZip(path))
        return contents;
    if (isLargeZip(path)) {
        const auto take = [&](const QString &name, const QByteArray &bytes) {
            contents.insert(name, bytes);
        };
        return readLargeZip(path, take) ? contents : noZip;
    }
    QZipReader reader(path);
    // For a truncated file the reader merely reports no entries.
    const auto entries = reader.fileInfoList();
    if (!reader.isReadable() || reader.status() != QZipReader::NoError || entries.isEmpty())
        return noZip;
    for (const QZipReader::FileInfo &entry : entries) {
        // The reader lists names without a leading slash but needs it for lookups, where it decodes
        // names in the system's encoding.
        const QString name = QString::fromLocal8Bit(entry.filePath.toUtf8());
        QByteArray data = reader.fileData(name);
        if (data.isEmpty())
            data = reader.fileData('/' + name);
        contents.insert(entry.filePath, data);
    }
    return contents;
}

QString difference(const QMap<QString, QByteArray> &found,
                   const QMap<QString, QByteArray> &expected)
{
    for (const QString &name : (found.keys() + expected.keys())) {
        if (!expected.contains(name))
            return name + " is not expected";
        if (!found.contains(name))
            return name + " is missing";
        if (found.value(name) != expected.value(name))
            return name + " contains " + QString::fromUtf8(found.value(name).left(1000));
    }
    return {};
}

QStringList zipEntryNames(const QString &path)
{
    QStringList names;
    if (isEmptyZip(path))
        return names;
    if (isLargeZip(path)) {
        const auto take = [&](const QString &name, const QByteArray &) { names.append(name); };
        return readLargeZip(path, take) ? names : noZip.keys();
    }
    QZipReader reader(path);
    for (const QZipReader::FileInfo &entry : reader.fileInfoList())
        names.append(entry.filePath);
    return names.isEmpty() ? noZip.keys() : names;
}

#pragma once

#include "LargeZip.h"
#include "ProgressSink.h"
#include "ZipTarget.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

class QZipWriter;

/// The limits of Qt's zip writer; a test may set lower ones.
struct ZipLimits
{
    /// Bytes per file. The writer compresses into a byte array, which holds less than 2 GiB and may
    /// become slightly larger than the contents.
    qint64 entryBytes = 2'146'000'000;
    /// Bytes and entries per archive: without Zip64, offsets have 32 bits and the entry count has
    /// 16.
    qint64 archiveBytes = 0xffff'ffff;
    std::size_t entries = 0xffff;
};

/// A zip file. Files are added by name, then packed all at once: by Qt's writer if its limits
/// certainly suffice, otherwise by libzip. Entry names are UTF-8, contents are compressed. One
/// thread at a time.
///
/// A file is packed up to the size that it has when it is added; an unreadable file becomes an
/// empty or truncated entry. An archive that cannot be written completely is deleted.
class ZipArchive
{
public:
    /// Creates or empties the file at @p zipPath. @p sink receives the total size before packing
    /// starts, then each file's size once it is packed.
    explicit ZipArchive(const QString &zipPath, ProgressSink sink = {}, const ZipLimits &most = {});
    /// Calls close().
    ~ZipArchive();
    ZipArchive(const ZipArchive &) = delete;
    ZipArchive &operator=(const ZipArchive &) = delete;

    /// Adds the file at @p filePath, which write() packs. @p packed is called after that, even if
    /// packing failed.
    void addFile(const QString &entryName, const QString &filePath,
                 std::function<void()> packed = {});

    /// Packs the added files, which may then be deleted. A second call does nothing.
    void write();

    /// Calls write() if necessary and completes the file. Returns false if the zip could not be
    /// written; no zip is left then. A second call does nothing and returns false.
    bool close();

private:
    void pack(const FileToPack &file);

    const ProgressSink progress;
    const ZipLimits limits;
    std::vector<FileToPack> files;
    bool written = false;
    ZipTarget target;
    std::unique_ptr<QZipWriter> writer; ///< null if libzip is used
};

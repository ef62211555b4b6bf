#pragma once

#include "LargeZip.h"
#include "ProgressSink.h"
#include "ZipTarget.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

class QZipWriter;

/// What Qt's zip writer can hold; a test may take less.
struct ZipLimits
{
    /// Bytes of one file. The writer compresses into one byte array that is a little larger than
    /// the contents, and an array holds less than 2 GiB: this leaves it that little.
    qint64 entryBytes = 2'146'000'000;
    /// Bytes of the whole archive and the number of its entries: without the zip64 extension,
    /// offsets have 32 bits and the number has 16.
    qint64 archiveBytes = 0xffff'ffff;
    std::size_t entries = 0xffff;
};

/// A zip file. What goes into it is named first, then packed all at once: by Qt's writer where it
/// can hold all of it for certain, otherwise as a large zip. Entry names are stored as UTF-8,
/// contents are compressed. One thread at a time.
///
/// A file that cannot be read becomes an empty entry; one that shrinks meanwhile is packed as far
/// as it was read, one that grows up to the size that it had when it was added. An archive that
/// could not be written whole is removed, because half a zip opens nowhere.
class ZipArchive
{
public:
    /// Creates the file at @p zipPath or empties the one that is there. @p sink learns the bytes of
    /// all files before they are packed, and those of each when it was.
    explicit ZipArchive(const QString &zipPath, ProgressSink sink = {}, const ZipLimits &most = {});
    /// Closes the archive unless that was done.
    ~ZipArchive();
    ZipArchive(const ZipArchive &) = delete;
    ZipArchive &operator=(const ZipArchive &) = delete;

    /// Makes the file at @p filePath an entry, which write() packs; @p packed is called after that,
    /// whether or not it could be.
    void addFile(const QString &entryName, const QString &filePath,
                 std::function<void()> packed = {});

    /// Packs the files that were added, which are not needed any more after that. A second call
    /// does nothing.
    void write();

    /// Completes the file, after write() if that was not called. False: no zip was written, and no
    /// file is left at the path.
    bool close();

private:
    void pack(const FileToPack &file);

    const ProgressSink progress;
    const ZipLimits limits;
    std::vector<FileToPack> files;
    bool written = false;
    ZipTarget target;
    std::unique_ptr<QZipWriter> writer; ///< Qt's, while it is at work
};

#pragma once

#include "ProgressSink.h"
#include "ZipTarget.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

class QZipWriter;

/// What one archive can hold; a test may ask for less.
struct ZipLimits
{
    /// Bytes of one file. The writer compresses into one byte array that is a little larger than
    /// the contents, and an array holds less than 2 GiB: this leaves it that little.
    qint64 entryBytes = 2'146'000'000;
    /// Bytes of the whole archive and the number of its entries: without the zip64 extension,
    /// offsets have 32 bits and the number has 16.
    qint64 archiveBytes = 0xffff'ffff;
    int entries = 0xffff;
};

/// A zip file. What goes into it is named first, then packed all at once. Entry names are stored as
/// UTF-8, contents are compressed. One thread at a time.
///
/// A file that cannot be read becomes an empty entry; one that shrinks meanwhile is packed as far
/// as it was read, one that grows up to the size that it had when it was added. An archive that
/// could not be written whole is removed, because half a zip opens nowhere.
class ZipArchive
{
public:
    /// Creates the file at @p zipPath or empties the one that is there. @p progress is given the
    /// bytes of each file as they are packed.
    explicit ZipArchive(const QString &zipPath, ProgressSink progress = {},
                        const ZipLimits &limits = {});
    /// Closes the archive unless that was done.
    ~ZipArchive();
    ZipArchive(const ZipArchive &) = delete;
    ZipArchive &operator=(const ZipArchive &) = delete;

    /// Makes the file at @p filePath an entry, which write() packs; @p packed is called after that,
    /// whether or not it could be.
    void addFile(const QString &entryName, const QString &filePath,
                 std::function<void()> packed = {});

    /// Packs the files that were added. They are not needed any more after that.
    void write();

    /// Completes the file, after write() if that was not called. False: no zip was written, and no
    /// file is left at the path.
    bool close();

private:
    struct Entry
    {
        QString name;
        QString path;
        qint64 size;
        std::function<void()> packed;
    };

    void pack(const Entry &entry);
    [[nodiscard]] bool hasRoomFor(const QString &entryName, qint64 size) const;

    const ProgressSink progress;
    const ZipLimits limits;
    std::vector<Entry> entries; ///< added and not yet packed
    ZipTarget target;
    std::unique_ptr<QZipWriter> writer; ///< null when the file could not be opened, or after close
    int packedEntries = 0;
};

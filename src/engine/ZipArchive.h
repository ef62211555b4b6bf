#pragma once

#include <QFile>
#include <QString>

#include <memory>

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

/// A zip file being written. Entry names are stored as UTF-8, contents are compressed as the
/// writer sees fit. One thread at a time.
///
/// What the format or the disk cannot take is told on the debug output and leaves the archive
/// valid; an archive that could not be written whole is removed, because half a zip opens nowhere.
class ZipArchive
{
public:
    /// Creates the file at @p zipPath or empties the one that is there.
    explicit ZipArchive(const QString &zipPath, const ZipLimits &limits = {});
    /// Closes the archive unless that was done.
    ~ZipArchive();
    ZipArchive(const ZipArchive &) = delete;
    ZipArchive &operator=(const ZipArchive &) = delete;

    /// Adds the whole of the file at @p filePath as @p entryName. A file that cannot be read, or
    /// not in one piece (2 GiB and more), becomes an empty entry. One for which the archive has no
    /// room left is left out; a smaller one may still fit after it.
    void addFile(const QString &entryName, const QString &filePath);

    /// Completes the file. False: nothing was written, and no file is left at the path.
    bool close();

private:
    /// A file that remembers that a write to it fell short, which the zip writer does not.
    class Target : public QFile
    {
    public:
        using QFile::QFile;
        bool failed = false;
        QString failure; ///< the system's words for the first failed write

    protected:
        qint64 writeData(const char *data, qint64 length) override;
    };

    [[nodiscard]] bool hasRoomFor(const QString &entryName, qint64 size) const;

    const ZipLimits limits;
    Target target;
    std::unique_ptr<QZipWriter> writer; ///< null when the file could not be opened, or after close
    int entries = 0;
};

#include "LargeZip.h"

#include "EngineLog.h"
#include "ZipTarget.h"

#include <QFile>

#include <zip.h>

#include <algorithm>
#include <deque>
#include <exception>
#include <memory>
#include <new>

namespace {

// The same as those of Qt's writer.
constexpr zip_uint32_t compressionLevel = 6;
constexpr zip_uint32_t fileAttributes = zip_uint32_t(0100600) << 16;

/// A file that libzip reads. Open only during its turn, because there may be many.
struct Source
{
    const FileToPack &origin;
    const ProgressSink &progress;
    qint64 left = 0; ///< bytes still to read
    std::unique_ptr<QFile> file = {};

    void open()
    {
        left = origin.size;
        file = std::make_unique<QFile>(origin.path);
        if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            qCWarning(engineLog) << "cannot read" << origin.path << file->errorString();
    }

    qint64 read(char *buffer, qint64 most)
    {
        if (!file->isOpen() || left == 0)
            return 0;
        const qint64 got = std::max(file->read(buffer, std::min(most, left)), qint64(0));
        if (got == 0)
            qCWarning(engineLog) << "read only" << origin.size - left << "of" << origin.size
                                 << "bytes:" << origin.path;
        left = got > 0 ? left - got : 0;
        if (progress.advance)
            progress.advance(got);
        return got;
    }
};

// libzip's callbacks for reading and writing. Paths are left to Qt, which supports long paths and
// all characters on every system.

zip_int64_t carryOut(zip_source_cmd_t command, Source &source, void *buffer, zip_uint64_t length)
{
    switch (command) {
    case ZIP_SOURCE_OPEN:
        source.open();
        return 0;
    case ZIP_SOURCE_READ:
        return source.read(static_cast<char *>(buffer), qint64(length));
    case ZIP_SOURCE_CLOSE:
        source.file.reset();
        return 0;
    case ZIP_SOURCE_STAT:
        // No size: a file may shrink, which libzip would treat as an error.
        zip_stat_init(static_cast<zip_stat_t *>(buffer));
        return sizeof(zip_stat_t);
    case ZIP_SOURCE_FREE:
        return 0;
    case ZIP_SOURCE_SUPPORTS:
        return ZIP_SOURCE_SUPPORTS_READABLE;
    default:
        return -1;
    }
}

zip_int64_t carryOut(zip_source_cmd_t command, ZipTarget &target, void *buffer, zip_uint64_t length)
{
    switch (command) {
    case ZIP_SOURCE_WRITE:
        return target.write(static_cast<const char *>(buffer), qint64(length));
    case ZIP_SOURCE_TELL_WRITE:
        return target.pos();
    case ZIP_SOURCE_SEEK_WRITE: {
        const zip_int64_t offset = zip_source_seek_compute_offset(
            zip_uint64_t(target.pos()), zip_uint64_t(target.size()), buffer, length, nullptr);
        return offset >= 0 && target.seek(offset) ? 0 : -1;
    }
    case ZIP_SOURCE_STAT:
        zip_stat_init(static_cast<zip_stat_t *>(buffer));
        return sizeof(zip_stat_t);
    case ZIP_SOURCE_SUPPORTS: // libzip requires read commands even for a new file
        return ZIP_SOURCE_SUPPORTS_WRITABLE;
    case ZIP_SOURCE_READ:
    case ZIP_SOURCE_SEEK:
    case ZIP_SOURCE_TELL:
    case ZIP_SOURCE_ERROR:
        return -1;
    default: // opening, closing and removing are left to ZipTarget
        return 0;
    }
}

/// The callback for @p File, a Source or a ZipTarget.
template <typename File>
zip_int64_t callback(void *file, void *buffer, zip_uint64_t length, zip_source_cmd_t command)
{
    try {
        return carryOut(command, *static_cast<File *>(file), buffer, length);
    } catch (const std::exception &) { // out of memory; must not propagate into C code
        return -1;
    }
}

struct Discard
{
    void operator()(zip_t *archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, Discard>;

/// Null if that fails; the target then has the reason.
Archive openArchive(ZipTarget &target)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t *const output = zip_source_function_create(callback<ZipTarget>, &target, &error);
    Archive archive(output != nullptr ? zip_open_from_source(output, ZIP_TRUNCATE, &error)
                                      : nullptr);
    if (!archive) {
        zip_source_free(output);
        target.fail(QString::fromUtf8(zip_error_strerror(&error)));
    }
    zip_error_fini(&error);
    return archive;
}

void add(zip_t *archive, Source &file)
{
    const QByteArray name = file.origin.name.toUtf8();
    zip_source_t *const source = zip_source_function_create(callback<Source>, &file, nullptr);
    const zip_int64_t index = zip_file_add(archive, name.constData(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        qCWarning(engineLog) << "left out of the zip:" << file.origin.path << zip_strerror(archive);
        zip_source_free(source);
        return;
    }
    zip_set_file_compression(archive, zip_uint64_t(index), ZIP_CM_DEFLATE, compressionLevel);
    zip_file_set_external_attributes(archive, zip_uint64_t(index), 0, ZIP_OPSYS_UNIX,
                                     fileAttributes);
}

} // namespace

void writeLargeZip(const std::vector<FileToPack> &files, ZipTarget &target,
                   const ProgressSink &progress)
try {
    std::deque<Source> sources; // outlives the archive, which refers to them
    Archive archive = openArchive(target);
    if (!archive)
        return;
    for (const FileToPack &file : files)
        add(archive.get(), sources.emplace_back(Source{file, progress}));
    if (zip_close(archive.get()) == 0) // reads and writes all files
        (void)archive.release();
    else
        target.fail(QString::fromUtf8(zip_strerror(archive.get())));
} catch (const std::bad_alloc &) {
    target.fail(QStringLiteral("no memory"));
}

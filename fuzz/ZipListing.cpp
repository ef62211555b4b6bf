#include "ZipListing.h"

#include "Fuzz.h"

#include <QFile>

#include <minizip/unzip.h>

#include <memory>

namespace {

struct Closer
{
    void operator()(unzFile zip) const { unzClose(zip); }
};

ZipEntry currentEntry(unzFile zip)
{
    constexpr uLong utf8Names = 0x800;
    unz_file_info64 info = {};
    demand(unzGetCurrentFileInfo64(zip, &info, nullptr, 0, nullptr, 0, nullptr, 0) == UNZ_OK,
           "the zip's directory is in order");
    demand((info.flag & utf8Names) != 0, "the zip says that its names are UTF-8");
    ZipEntry entry{std::string(info.size_filename, '\0'),
                   std::string(std::size_t(info.uncompressed_size), '\0')};
    unzGetCurrentFileInfo64(zip, &info, entry.name.data(), info.size_filename, nullptr, 0, nullptr,
                            0);
    demand(unzOpenCurrentFile(zip) == UNZ_OK, "an entry is what the directory says");
    const auto size = unsigned(entry.contents.size());
    demand(unzReadCurrentFile(zip, entry.contents.data(), size) == int(size), "an entry is whole");
    demand(unzCloseCurrentFile(zip) == UNZ_OK, "an entry has its checksum");
    return entry;
}

/// Only an end record, which the reader does not accept as a zip.
bool isEmptyZip(const QString &path)
{
    QFile file(path);
    demand(file.open(QIODevice::ReadOnly), "the zip is there");
    return file.readAll() == QByteArray("PK\5\6") + QByteArray(18, '\0');
}

} // namespace

std::vector<ZipEntry> listZip(const QString &path)
{
    if (isEmptyZip(path))
        return {};
    const std::unique_ptr<void, Closer> zip(unzOpen64(path.toUtf8().constData()));
    demand(zip != nullptr, "a zip");
    unz_global_info64 info = {};
    demand(unzGetGlobalInfo64(zip.get(), &info) == UNZ_OK, "the zip has its end record");
    std::vector<ZipEntry> entries;
    for (ZPOS64_T i = 0; i < info.number_entry; ++i) {
        const int found = i == 0 ? unzGoToFirstFile(zip.get()) : unzGoToNextFile(zip.get());
        demand(found == UNZ_OK, "the zip has as many entries as it says");
        entries.push_back(currentEntry(zip.get()));
    }
    return entries;
}

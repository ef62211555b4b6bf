// Entries of any name and contents are read back from a zip unchanged.
#include "Fuzz.h"
#include "MemoryFile.h"
#include "ZipArchive.h"
#include "ZipListing.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <list>

namespace {

constexpr std::size_t mostFiles = 500; // below the limit of open files

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider input(data, size);
    const MemoryFile zip;
    std::vector<ZipEntry> added;
    std::list<MemoryFile> files; // read when the zip is written
    ZipArchive archive(zip.path());
    while (input.remaining_bytes() > 0 && added.size() < mostFiles) {
        const QString name = QString::fromStdString(input.ConsumeRandomLengthString());
        const std::string contents = input.ConsumeRandomLengthString();
        files.emplace_back(QByteArray::fromStdString(contents));
        archive.addFile(name, files.back().path());
        added.push_back({name.toStdString(), contents});
    }
    demand(archive.close(), "the zip is written");

    const std::vector<ZipEntry> found = listZip(zip.path());
    demand(found.size() == added.size(), "as many entries as were added");
    for (std::size_t i = 0; i < added.size(); ++i) {
        demand(found[i].name == added[i].name, "the name that was given");
        demand(found[i].contents == added[i].contents, "the contents of the file");
    }
    return 0;
}

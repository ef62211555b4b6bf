// Entries of any name and contents come out of a zip as they went in.
#include "Fuzz.h"
#include "MemoryFile.h"
#include "ZipArchive.h"
#include "ZipListing.h"

#include <fuzzer/FuzzedDataProvider.h>

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider input(data, size);
    const MemoryFile zip;
    std::vector<ZipEntry> added;
    ZipArchive archive(zip.path());
    while (input.remaining_bytes() > 0) {
        const QString name = QString::fromStdString(input.ConsumeRandomLengthString());
        const std::string contents = input.ConsumeRandomLengthString();
        const MemoryFile file(QByteArray::fromStdString(contents));
        archive.addFile(name, file.path());
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

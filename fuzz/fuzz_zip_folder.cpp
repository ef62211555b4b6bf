// A folder of any names and depth becomes a zip with relative paths as entry names, and is removed;
// hidden files stay in the folder and out of the zip.
#include "Fuzz.h"
#include "ScratchFolder.h"
#include "ZipListing.h"
#include "ZipPacker.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <map>
#include <string>
#include <string_view>

namespace {

using Files = std::map<std::string, std::string>;

constexpr std::size_t longestName = 255;

/// A valid file name: UTF-8 without a slash.
std::string nameOf(const std::string &bytes)
{
    std::string name = QString::fromUtf8(bytes.data(), int(bytes.size())).toStdString();
    name.erase(
        std::remove_if(name.begin(), name.end(), [](char c) { return c == '/' || c == '\0'; }),
        name.end());
    if (name.empty() || name == "." || name == ".." || name.size() > longestName)
        return "n";
    return name;
}

/// Creates a file in a folder below @p root. Returns false if something else has this name.
bool makeFile(const std::string &root, const std::string &name, const std::string &contents)
{
    for (std::size_t slash = name.find('/'); slash != std::string::npos;
         slash = name.find('/', slash + 1))
        ::mkdir((root + '/' + name.substr(0, slash)).c_str(), 0700);
    const int file = ::open((root + '/' + name).c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file < 0)
        return false;
    demand(::write(file, contents.data(), contents.size()) == ssize_t(contents.size()),
           "a file can be filled");
    ::close(file);
    return true;
}

Files makeFiles(const std::string &root, FuzzedDataProvider &input)
{
    Files files;
    std::string folder;
    while (input.remaining_bytes() > 0) {
        const std::string name = folder + nameOf(input.ConsumeRandomLengthString(300));
        switch (input.ConsumeIntegralInRange(0, 3)) {
        case 0: // enter a folder
            if (std::count(name.begin(), name.end(), '/') < 6)
                folder = name + '/';
            break;
        case 1: // leave it
            folder.clear();
            break;
        default:
            const std::string contents = input.ConsumeRandomLengthString();
            if (makeFile(root, name, contents))
                files[name] = contents;
            break;
        }
    }
    return files;
}

bool isHidden(const std::string &name)
{
    return name.front() == '.' || name.find("/.") != std::string::npos;
}

/// Whether @p name precedes @p next in a case-insensitive walk.
bool isInOrder(const std::string &name, const std::string &next)
{
    const QStringList parts = QString::fromStdString(name).split(QLatin1Char('/'));
    const QStringList nextParts = QString::fromStdString(next).split(QLatin1Char('/'));
    int i = 0;
    while (i + 1 < parts.size() && i + 1 < nextParts.size() && parts[i] == nextParts[i])
        ++i;
    return parts[i].toLower() <= nextParts[i].toLower();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider input(data, size);
    ScratchFolder scratch;
    const QString root = scratch.folder(QStringLiteral("LogInfo"));
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    const Files files = makeFiles(root.toStdString(), input);
    demand(zipFolder(root, zip), "packing always succeeds");

    Files expected;
    Files hidden;
    for (const auto &[name, contents] : files)
        (isHidden(name) ? hidden : expected)[name] = contents;
    const std::vector<ZipEntry> entries = listZip(zip);
    demand(entries.size() == expected.size(), "an entry for each file that is not hidden");
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto found = expected.find(entries[i].name);
        demand(found != expected.end(), "entries are named by their paths");
        demand(found->second == entries[i].contents, "entries hold what the files held");
        demand(i == 0 || isInOrder(entries[i - 1].name, entries[i].name), "entries are sorted");
        expected.erase(found);
    }
    for (const auto &[name, contents] : hidden)
        demand(scratch.read(QStringLiteral("LogInfo/") + QString::fromStdString(name)) ==
                   QByteArray::fromStdString(contents),
               "what is hidden stays");
    demand(::access(root.toUtf8().constData(), F_OK) != 0 || !hidden.empty(),
           "the folder goes unless something is hidden in it");
    return 0;
}

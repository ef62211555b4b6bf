#include "ZipTools.h"

#include "Machine.h"
#include "ZipContents.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QVector>

#include <zip.h>

#include <array>
#include <memory>

namespace {

constexpr int patience = 900'000; // milliseconds; gigabytes on a busy machine

/// An entry as listed by a tool.
struct Entry
{
    QString name;
    qint64 size = 0;
    quint32 checksum = 0;

    bool operator==(const Entry &other) const
    {
        return name == other.name && size == other.size && checksum == other.checksum;
    }
};

/// The CRC-32 of @p bytes.
quint32 checksumOf(const QByteArray &bytes)
{
    static const QVector<quint32> table = [] {
        QVector<quint32> made;
        for (quint32 i = 0; i < 256; ++i) {
            quint32 value = i;
            for (int bit = 0; bit < 8; ++bit)
                value = (value >> 1) ^ ((value & 1) != 0 ? 0xedb88320U : 0);
            made.append(value);
        }
        return made;
    }();
    quint32 sum = 0xffffffff;
    for (const char byte : bytes)
        sum = (sum >> 8) ^ table.at(int((sum ^ quint8(byte)) & 0xff));
    return ~sum;
}

/// Absolute names begin with a slash, which some tools drop.
QString relative(const QString &name)
{
    return name.startsWith('/') ? name.mid(1) : name;
}

/// A running tool; several run in parallel.
class Tool
{
public:
    Tool(const char *program, const QStringList &arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LC_ALL", "C.UTF-8"); // for names beyond ASCII
        environment.remove("LD_PRELOAD");
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
    }

    /// Waits for its end; returns false if it failed or did not start.
    bool succeeds()
    {
        const bool ended = process.state() == QProcess::NotRunning
                               ? process.error() != QProcess::FailedToStart
                               : process.waitForFinished(patience);
        output += process.readAllStandardOutput();
        errors += process.readAllStandardError();
        return ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }

    [[nodiscard]] QString complaint(const char *what)
    {
        return QString(what) + ": " + QString::fromUtf8(errors) +
               QString::fromUtf8(output).right(1000) + process.errorString();
    }

    QByteArray output;
    QByteArray errors;

private:
    QProcess process;
};

/// The expected output of the tools for several zips, concatenated.
struct Expected
{
    explicit Expected(const QStringList &paths)
    {
        for (const QString &path : paths) {
            const QMap<QString, QByteArray> contents = zipContents(path);
            for (const QString &name : zipEntryNames(path)) {
                const QByteArray bytes = contents.value(name);
                entries.append({relative(name), bytes.size(), checksumOf(bytes)});
                unpacked += bytes;
            }
        }
    }

    QVector<Entry> entries;
    QByteArray unpacked;
};

QVector<Entry> listedByUnzip(const Tool &tool)
{
    static const QRegularExpression line(
        R"(^ *(\d+) +\S+ +\d+ +-?\d+% +\S+ +\S+ +([0-9a-f]{8}) +(.+)$)");
    QVector<Entry> entries;
    for (const QString &row : QString::fromUtf8(tool.output).split('\n')) {
        const auto match = line.match(row);
        if (match.hasMatch())
            entries.append({relative(match.captured(3)), match.captured(1).toLongLong(),
                            match.captured(2).toUInt(nullptr, 16)});
    }
    return entries;
}

QVector<Entry> listedBy7z(const Tool &tool)
{
    QVector<Entry> entries;
    for (const QString &row : QString::fromUtf8(tool.output).split('\n')) {
        if (row.startsWith("Path = "))
            entries.append({relative(row.mid(7))});
        else if (row.startsWith("Size = ") && !entries.isEmpty())
            entries.last().size = row.mid(7).toLongLong();
        else if (row.startsWith("CRC = ") && !entries.isEmpty())
            entries.last().checksum = row.mid(6).toUInt(nullptr, 16); // none for an empty file
    }
    return entries;
}

QVector<Entry> listedByPython(const Tool &tool)
{
    QVector<Entry> entries;
    for (const QString &row : QString::fromUtf8(tool.errors).split('\n')) {
        const QString name = row.section(' ', 2);
        if (!name.isEmpty())
            entries.append({relative(name), row.section(' ', 1, 1).toLongLong(),
                            row.left(8).toUInt(nullptr, 16)});
    }
    return entries;
}

/// Lists entries on standard error and unpacks them to standard output.
const char *const pythonProgram =
    "import shutil, sys, zipfile\n"
    "for path in sys.argv[1:]:\n"
    "    z = zipfile.ZipFile(path)\n"
    "    for i in z.infolist():\n"
    "        shutil.copyfileobj(z.open(i), sys.stdout.buffer, 1 << 20)\n" // checks the checksum
    "        print('%08x %d %s' % (i.CRC, i.file_size, i.filename), file=sys.stderr)\n";

/// Lists entries in the same format.
const char *const listingProgram =
    "import sys, zipfile\n"
    "for i in zipfile.ZipFile(sys.argv[1]).infolist():\n"
    "    print('%08x %d %s' % (i.CRC, i.file_size, i.filename), file=sys.stderr)\n";

/// Runs a tool once per zip. unzip exits with 1 for a zip without entries, which has 22 bytes.
const char *const eachZip =
    "tool=$1; shift; for zip; do $tool \"$zip\" || { code=$?;"
    " [ $code = 1 ] && [ \"$(stat -c %s \"$zip\")\" = 22 ] || exit $code; }; done";

std::unique_ptr<Tool> forEach(const char *command, const QStringList &paths)
{
    return std::make_unique<Tool>("sh", QStringList{"-c", eachZip, "sh", command} + paths);
}

std::unique_ptr<Tool> python(const QStringList &paths)
{
    return std::make_unique<Tool>("python3", QStringList{"-c", pythonProgram} + paths);
}

/// Prints the expected directory entry of each file on standard error, from a list of names and
/// paths, each terminated by a zero byte.
const char *const describingProgram = "import os, sys, zlib\n"
                                      "known = {}\n"
                                      "def described(path):\n"
                                      "    sum = 0\n"
                                      "    with open(path, 'rb') as file:\n"
                                      "        while block := file.read(1 << 20):\n"
                                      "            sum = zlib.crc32(block, sum)\n"
                                      "    return '%08x %d' % (sum, os.path.getsize(path))\n"
                                      "fields = open(sys.argv[1], 'rb').read().split(b'\\0')\n"
                                      "for name, path in zip(fields[0::2], fields[1::2]):\n"
                                      "    known[path] = known.get(path) or described(path)\n"
                                      "    print(known[path], name.decode(), file=sys.stderr)\n";

/// Compares the zip at @p path with its originals by the library alone, where there are no tools. A
/// copy goes to the folder named by VANTREL_KEPT_ZIPS, for tools elsewhere.
QString libraryComplaint(const QString &path, const QVector<PackedFile> &originals)
{
    constexpr int blockSize = 1 << 20;
    const QString kept = qEnvironmentVariable("VANTREL_KEPT_ZIPS");
    if (!kept.isEmpty() && !QFile::copy(path, kept + QFileInfo(path).dir().dirName() + ".zip"))
        return "cannot be kept";
    const std::unique_ptr<zip_t, decltype(&zip_discard)> archive(
        zip_open(path.toUtf8().constData(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr), &zip_discard);
    if (archive == nullptr || zip_get_num_entries(archive.get(), 0) != originals.size())
        return "no zip, or another number of entries";
    for (int i = 0; i < originals.size(); ++i) {
        const PackedFile &original = originals.at(i);
        if (zip_get_name(archive.get(), zip_uint64_t(i), ZIP_FL_ENC_RAW) != original.name.toUtf8())
            return "other names";
        const std::unique_ptr<zip_file_t, decltype(&zip_fclose)> entry(
            zip_fopen_index(archive.get(), zip_uint64_t(i), 0), &zip_fclose);
        QFile file(original.path);
        if (entry == nullptr || !file.open(QIODevice::ReadOnly))
            return "cannot be opened: " + original.name;
        QByteArray expected;
        do {
            QByteArray block(blockSize, Qt::Uninitialized);
            expected = file.read(blockSize);
            block.resize(int(zip_fread(entry.get(), block.data(), blockSize)));
            if (block != expected)
                return "other contents: " + original.name;
        } while (!expected.isEmpty());
    }
    return {};
}

} // namespace

QString zipToolsComplaint(const QStringList &paths)
{
    if (onWindows())
        return {};
    struct Check
    {
        const char *name;
        std::unique_ptr<Tool> tool;
        bool unpacks;
        QVector<Entry> (*listed)(const Tool &);
    };
    std::array<Check, 6> checks{{
        {"unzip tests", forEach("unzip -tqq", paths), false, nullptr},
        {"unzip lists", forEach("unzip -v", paths), false, listedByUnzip},
        {"unzip unpacks", forEach("unzip -p", paths), true, nullptr},
        {"7z lists", forEach("7z l -slt -ba", paths), false, listedBy7z},
        {"7z tests and unpacks", forEach("7z x -so", paths), true, nullptr},
        {"python", python(paths), true, listedByPython},
    }};
    const Expected expected(paths); // computed while the tools run
    QString complaint;
    for (Check &check : checks) {
        const bool right =
            check.tool->succeeds() &&
            (check.listed == nullptr || check.listed(*check.tool) == expected.entries) &&
            (!check.unpacks || check.tool->output == expected.unpacked);
        if (!right && complaint.isEmpty())
            complaint = check.tool->complaint(check.name);
    }
    return complaint;
}

QString zipToolsComplaint(const QString &zip, const QVector<PackedFile> &originals)
{
    if (onWindows())
        return libraryComplaint(zip, originals);
    ScratchFolder scratch;
    QByteArray list;
    for (const PackedFile &original : originals)
        list += original.name.toUtf8() + '\0' + QFile::encodeName(original.path) + '\0';
    const QString listPath = scratch.file("originals", list);
    Tool described("python3", {"-c", describingProgram, listPath});
    Tool testedBy7z("7z", {"t", zip});
    Tool testedByUnzip("unzip", {"-tqq", zip});
    Tool testedByPython("python3", {"-m", "zipfile", "-t", zip});
    Tool by7z("7z", {"l", "-slt", "-ba", zip});
    Tool byUnzip("unzip", {"-v", zip});
    Tool byPython("python3", {"-c", listingProgram, zip});
    for (Tool *tool :
         {&described, &by7z, &byUnzip, &byPython, &testedBy7z, &testedByUnzip, &testedByPython}) {
        if (!tool->succeeds())
            return tool->complaint("a tool");
    }
    const QVector<Entry> expected = listedByPython(described);
    return listedBy7z(by7z) == expected && listedByUnzip(byUnzip) == expected &&
                   listedByPython(byPython) == expected
               ? QString()
               : "names, sizes or checksums differ";
}

QMap<QString, QByteArray> verifiedZipContents(const QString &path)
{
    const QString complaint = zipToolsComplaint({path});
    return complaint.isEmpty() ? zipContents(path)
                               : QMap<QString, QByteArray>{{complaint, QByteArray()}};
}

void KeptZips::keep(const QString &path)
{
    if (!QFile::exists(path))
        return;
    const QString copy = folder.path(QString::number(paths.size()) + ".zip");
    if (!QFile::copy(path, copy))
        qFatal("cannot keep %s", qPrintable(path));
    paths.append(copy);
}

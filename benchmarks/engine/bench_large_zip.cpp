// Packing a file of 3 GiB, beyond the limit of Qt's zip writer, compared with "zip -6". The file is
// sparse, so this measures reading, compressing and checksumming zeros.

#include "Ratios.h"
#include "ZipArchive.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

constexpr qint64 fileSize = qint64(3) << 30;

QString scratch(const char *name)
{
    static const QTemporaryDir dir;
    return dir.filePath(QString::fromLatin1(name));
}

void largeZip(benchmark::State &state)
{
    for (auto _ : state) {
        ZipArchive archive(scratch("program.zip"));
        archive.addFile(QStringLiteral("huge.dmp"), scratch("huge.dmp"));
        if (!archive.close())
            state.SkipWithError("no zip");
    }
}
BENCHMARK(largeZip)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

void zipProgram(benchmark::State &state)
{
    const QString zip = scratch("peer.zip");
    const QByteArray command = QFile::encodeName(
        QStringLiteral("exec zip -6 -q -j '%1' '%2'").arg(zip, scratch("huge.dmp")));
    for (auto _ : state) {
        QFile::remove(zip);
        if (std::system(command.constData()) != 0)
            state.SkipWithError("no zip");
    }
}
BENCHMARK(zipProgram)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    QFile file(scratch("huge.dmp"));
    if (!file.open(QIODevice::WriteOnly) || file.write("dump") != 4 || !file.resize(fileSize))
        return 1;
    return runAndCompare(
        argc, argv,
        {{{"zip of a sparse file of 3 GiB", "largeZip", "zip -6", "zipProgram", 0, Clock::Wall}}},
        3);
}

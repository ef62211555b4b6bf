// Export of log files compared with the bare zip writer and "zip -6" on the same files: a few large
// ones, and as many small ones as the table lists.

#include "CLogProcessThread.h"
#include "Ratios.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTableWidgetItem>
#include <QTemporaryDir>

#include <private/qzipwriter_p.h>

#include <cstdlib>
#include <memory>
#include <vector>

namespace {

/// An SDK folder with logs that compress about as well as real ones.
class SdkFolder
{
public:
    SdkFolder(int fileCount, int fileSize)
    {
        QDir().mkpath(path(QStringLiteral("QZviewer")));
        quint32 state = 1;
        for (int i = 0; i < fileCount; ++i) {
            QFile file(path(QStringLiteral("QZviewer/sdk_%1.log").arg(i)));
            file.open(QIODevice::WriteOnly);
            while (file.pos() < fileSize) {
                state = state * 1664525U + 1013904223U;
                file.write(QByteArray("2026-03-05 12:00:07,") + QByteArray::number(state % 1000) +
                           " DEBUG [" + QByteArray::number(state >> 20) +
                           "] [qzsdk.stream] frame " + QByteArray::number(state) +
                           " delivered to the user buffer\n");
            }
        }
    }

    [[nodiscard]] QString path(const QString &name = {}) const
    {
        return dir.path() + QLatin1Char('/') + name;
    }
    [[nodiscard]] QFileInfoList logs() const
    {
        return QDir(path(QStringLiteral("QZviewer"))).entryInfoList(QDir::Files);
    }

private:
    QTemporaryDir dir;
};

const SdkFolder &largeLogs()
{
    static const SdkFolder folder(12, 150'000'000 / 12);
    return folder;
}

const SdkFolder &smallLogs()
{
    static const SdkFolder folder(50, 200'000);
    return folder;
}

using Folder = const SdkFolder &(*)();

void zipWriterAlone(benchmark::State &state, Folder folder)
{
    const QFileInfoList files = folder().logs();
    for (auto _ : state) {
        QZipWriter writer(folder().path(QStringLiteral("alone.zip")));
        for (const QFileInfo &info : files) {
            QFile file(info.filePath());
            file.open(QIODevice::ReadOnly);
            writer.addFile(info.fileName(), file.readAll());
        }
        writer.close();
    }
}

void zipProgram(benchmark::State &state, Folder folder)
{
    const QString zip = folder().path(QStringLiteral("program.zip"));
    const QByteArray command =
        QFile::encodeName(QStringLiteral("cd '%1' && exec zip -6 -q '%2' *.log")
                              .arg(folder().path(QStringLiteral("QZviewer")), zip));
    for (auto _ : state) {
        QFile::remove(zip);
        if (std::system(command.constData()) != 0)
            state.SkipWithError("no zip");
    }
}

void exportJob(benchmark::State &state, Folder folder)
{
    std::vector<std::unique_ptr<QTableWidgetItem>> owned;
    QList<QTableWidgetItem *> items;
    for (const QFileInfo &info : folder().logs()) {
        owned.push_back(std::make_unique<QTableWidgetItem>());
        owned.back()->setToolTip(info.filePath());
        items.append(owned.back().get());
    }
    CLogProcessThread worker;
    worker.setBasePath(folder().path());
    worker.setLogSourceFolder(QStringLiteral("QZviewer"));
    QEventLoop loop;
    QObject::connect(&worker, &CLogProcessThread::closeWaitDlg, &loop, &QEventLoop::quit);
    worker.start();
    for (auto _ : state) {
        worker.setSdkLogItems(items);
        worker.enqueueExport(folder().path(QStringLiteral("job.zip")));
        loop.exec();
    }
}

void measure(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
}

BENCHMARK_CAPTURE(zipWriterAlone, large, largeLogs)->Apply(measure);
BENCHMARK_CAPTURE(zipProgram, large, largeLogs)->Apply(measure);
BENCHMARK_CAPTURE(exportJob, large, largeLogs)->Apply(measure);
BENCHMARK_CAPTURE(zipWriterAlone, small, smallLogs)->Apply(measure);
BENCHMARK_CAPTURE(zipProgram, small, smallLogs)->Apply(measure);
BENCHMARK_CAPTURE(exportJob, small, smallLogs)->Apply(measure);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return runAndCompare(argc, argv,
                         {{{"export of 150 MB in 12 logs", "exportJob/large", "bare zip writer",
                            "zipWriterAlone/large", 1.08, Clock::Wall},
                           {"export of 150 MB in 12 logs", "exportJob/large", "zip -6",
                            "zipProgram/large", 1, Clock::Wall},
                           {"export of 50 logs of 200 KB", "exportJob/small", "bare zip writer",
                            "zipWriterAlone/small", 0, Clock::Wall},
                           {"export of 50 logs of 200 KB", "exportJob/small", "zip -6",
                            "zipProgram/small", 0, Clock::Wall}}},
                         5);
}

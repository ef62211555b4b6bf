// Exporting 12 log files, 150 MB together, against the zip writer alone and "zip -6" on the same
// files. Target: at most 1.15 times the zip writer's time.

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

constexpr int fileCount = 12;
constexpr int fileSize = 150'000'000 / fileCount;

/// An SDK folder with log lines in it that compress about as well as real ones.
const QString &base()
{
    static const QTemporaryDir dir;
    static const QString path = [] {
        QDir().mkpath(dir.path() + QStringLiteral("/QZviewer"));
        quint32 state = 1;
        for (int i = 0; i < fileCount; ++i) {
            QFile file(dir.path() + QStringLiteral("/QZviewer/sdk_%1.log").arg(i));
            file.open(QIODevice::WriteOnly);
            while (file.pos() < fileSize) {
                state = state * 1664525U + 1013904223U;
                file.write(QByteArray("2026-03-05 12:00:07,") + QByteArray::number(state % 1000) +
                           " DEBUG [" + QByteArray::number(state >> 20) +
                           "] [qzsdk.stream] frame " + QByteArray::number(state) +
                           " delivered to the user buffer\n");
            }
        }
        return dir.path() + QLatin1Char('/');
    }();
    return path;
}

QFileInfoList logs()
{
    return QDir(base() + QStringLiteral("QZviewer")).entryInfoList(QDir::Files);
}

void zipWriterAlone(benchmark::State &state)
{
    const QFileInfoList files = logs();
    for (auto _ : state) {
        QZipWriter writer(base() + QStringLiteral("alone.zip"));
        for (const QFileInfo &info : files) {
            QFile file(info.filePath());
            file.open(QIODevice::ReadOnly);
            writer.addFile(info.fileName(), file.readAll());
        }
        writer.close();
    }
}
BENCHMARK(zipWriterAlone)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

void zipProgram(benchmark::State &state)
{
    const QString zip = base() + QStringLiteral("program.zip");
    const QByteArray command = QFile::encodeName(
        QStringLiteral("cd '%1QZviewer' && exec zip -6 -q '%2' *.log").arg(base(), zip));
    for (auto _ : state) {
        QFile::remove(zip);
        if (std::system(command.constData()) != 0)
            state.SkipWithError("no zip");
    }
}
BENCHMARK(zipProgram)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

void exportJob(benchmark::State &state)
{
    std::vector<std::unique_ptr<QTableWidgetItem>> owned;
    QList<QTableWidgetItem *> items;
    for (const QFileInfo &info : logs()) {
        owned.push_back(std::make_unique<QTableWidgetItem>());
        owned.back()->setToolTip(info.filePath());
        items.append(owned.back().get());
    }
    CLogProcessThread worker;
    worker.setBasePath(base());
    worker.setLogSourceFolder(QStringLiteral("QZviewer"));
    QEventLoop loop;
    QObject::connect(&worker, &CLogProcessThread::closeWaitDlg, &loop, &QEventLoop::quit);
    worker.start();
    for (auto _ : state) {
        worker.setSdkLogItems(items);
        worker.enqueueExport(base() + QStringLiteral("job.zip"));
        loop.exec();
    }
}
BENCHMARK(exportJob)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return runAndCompare(
        argc, argv,
        {{{"export of 150 MB of logs", "exportJob", "bare zip writer", "zipWriterAlone", 1.15,
           Clock::Wall},
          {"export of 150 MB of logs", "exportJob", "zip -6", "zipProgram", 0, Clock::Wall}}},
        5);
}

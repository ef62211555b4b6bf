// Exporting 12 log files, 150 MB together, against the zip writer alone on the same files.
// Target: at most 1.15 times that.

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
BENCHMARK(zipWriterAlone)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

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
BENCHMARK(exportJob)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return runAndCompare(
        argc, argv,
        {{"export of 150 MB of logs / zip writer alone", "exportJob", "zipWriterAlone", 1.15}});
}

// Filling the file table from a folder of 100,000 logs, compared with listing the folder and
// calling stat for each file.

#include "CComboBoxEx.h"
#include "ModalDialog.h"
#include "Ratios.h"
#include "Vantrel.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDateTime>
#include <QDialog>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

namespace {

constexpr int fileCount = 100000;

/// A home folder with an empty log source and one with many files.
const QString &home()
{
    static const QTemporaryDir dir;
    static const QString path = [] {
        const QString many = dir.path() + QStringLiteral("/QZSDK/many");
        QDir().mkpath(many);
        QDir().mkpath(dir.path() + QStringLiteral("/QZSDK/none"));
        for (int i = 0; i < fileCount; ++i) {
            QFile file(many + QStringLiteral("/sdk_%1.log").arg(i));
            file.open(QIODevice::WriteOnly);
            file.setFileTime(QDateTime::fromSecsSinceEpoch(1700000000 + (i * 7919) % fileCount),
                             QFileDevice::FileModificationTime);
        }
        return dir.path();
    }();
    return path;
}

void listAndStat(benchmark::State &state)
{
    const QString folder = home() + QStringLiteral("/QZSDK/many");
    for (auto _ : state) {
        qint64 largest = 0;
        QDirIterator walk(folder, QDir::Files | QDir::NoSymLinks | QDir::NoDotAndDotDot);
        while (walk.hasNext()) {
            walk.next();
            // The same system call as for the time, without Qt's time zone conversion.
            largest = qMax(largest, walk.fileInfo().size());
        }
        benchmark::DoNotOptimize(largest);
    }
}
BENCHMARK(listAndStat)->Unit(benchmark::kMillisecond);

void fillTable(benchmark::State &state)
{
    Vantrel window(nullptr, {home(), {}});
    auto *sources = window.findChild<CComboBoxEx *>(QStringLiteral("comboSource"));
    for (auto _ : state) {
        state.PauseTiming();
        sources->setCurrentText(QStringLiteral("none"));
        state.ResumeTiming();
        sources->setCurrentText(QStringLiteral("many"));
    }
}
BENCHMARK(fillTable)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    ModalDialog::setRunner([](QDialog &) { return int(QDialog::Rejected); });
    return runAndCompare(
        argc, argv,
        {{{"file table of 100,000 logs", "fillTable", "list and stat", "listAndStat", 1.3}}});
}

// From start to first paint: the program against an empty Qt window of the same size, each in a
// process of its own. Target: at most 1.5 times that. Uses the platform that QT_QPA_PLATFORM names.

#include "Ratios.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace {

/// A home with a log source of 60 files and the SDK's properties file.
const QString &home()
{
    static const QTemporaryDir dir;
    static const QString path = [] {
        QDir(dir.path()).mkpath(QStringLiteral("QZSDK/QZviewer"));
        QDir(dir.path()).mkpath(QStringLiteral("Client"));
        for (int i = 0; i < 60; ++i) {
            QFile log(dir.path() + QStringLiteral("/QZSDK/QZviewer/%1.log").arg(i));
            log.open(QIODevice::WriteOnly);
        }
        QFile properties(dir.path() + QStringLiteral("/Client/SDKLOG_default.properties"));
        properties.open(QIODevice::WriteOnly);
        properties.write("log4cpp.rootCategory = INFO\nlog4cpp.category.qzsdk = INFO, a_qzsdk\n");
        return dir.path();
    }();
    return path;
}

void start(benchmark::State &state, const char *program)
{
    const QString path =
        QCoreApplication::applicationDirPath() + QLatin1Char('/') + QString::fromLatin1(program);
    for (auto _ : state) {
        QProcess process;
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(path, {home()});
        process.waitForFinished();
        if (process.exitCode() != 0)
            state.SkipWithError("the program failed");
    }
}
BENCHMARK_CAPTURE(start, empty_window, "start_empty")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(start, vantrel, "start_vantrel")->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    return runAndCompare(
        argc, argv,
        {{"start to first paint / empty Qt window", "start/vantrel", "start/empty_window", 1.5}});
}

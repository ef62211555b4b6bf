// Time from start to first paint: the program compared with an empty Qt window of the same size,
// each in its own process. Uses the platform in QT_QPA_PLATFORM.

#include "Ratios.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

namespace {

void write(const QString &path, const QByteArray &contents)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(contents);
}

/// A home folder with a registered client, a log source of 60 files and the SDK's properties file.
const QString &home()
{
    static const QTemporaryDir dir;
    static const QString path = [] {
        for (int i = 0; i < 60; ++i)
            write(dir.path() + QStringLiteral("/QZSDK/QZviewer/%1.log").arg(i), {});
        write(dir.path() + QStringLiteral("/Client/SDKLOG_default.properties"),
              "log4cpp.rootCategory = INFO\nlog4cpp.category.qzsdk = INFO, a_qzsdk\n");
        write(dir.path() + QStringLiteral("/Pemberk/qzcfgfile.ini"),
              "[General]\nDefaultIcon=\"" + QFile::encodeName(dir.path()) +
                  "/Client/QZviewer.exe,0\"\n");
        return dir.path();
    }();
    return path;
}

void start(benchmark::State &state, const char *program)
{
    const QString path =
        QCoreApplication::applicationDirPath() + QLatin1Char('/') + QString::fromLatin1(program);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home());
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home());
    for (auto _ : state) {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(QCoreApplication::applicationDirPath()); // has the skin
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(path, QStringList());
        process.waitForFinished();
        if (process.exitCode() != 0)
            state.SkipWithError("the program failed");
    }
}

#define START(name, program)                                                                       \
    BENCHMARK_CAPTURE(start, name, program)                                                        \
        ->Unit(benchmark::kMillisecond)                                                            \
        ->UseRealTime()                                                                            \
        ->Iterations(1)

START(empty_window, "start_empty");
START(vantrel, "start_vantrel");

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    return runAndCompare(argc, argv,
                         {{{"start to first paint", "start/vantrel", "empty Qt window",
                            "start/empty_window", 1.5, Clock::Wall}}},
                         41);
}

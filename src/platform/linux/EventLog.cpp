#include "EventLog.h"

#include "PlatformLog.h"
#include "linux/LinuxSeams.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace {

constexpr int pollInterval = 200;        // milliseconds
constexpr int maxErrorBytes = 64 * 1024; // of standard error

enum class Ending { Done, Failed, Hung };

/// Waits for @p process as long as @p target grows. Appends its standard error to @p errors.
Ending watch(QProcess &process, const QString &target, const Journal &journal, QByteArray &errors)
{
    QElapsedTimer idle;
    idle.start();
    qint64 size = 0;
    for (;;) {
        const bool ended =
            process.waitForFinished(pollInterval) || process.state() == QProcess::NotRunning;
        errors.append(process.readAllStandardError());
        errors.truncate(maxErrorBytes);
        const qint64 newSize = QFileInfo(target).size();
        if (ended) {
            const bool exitedNormally = process.exitStatus() == QProcess::NormalExit;
            return exitedNormally && process.exitCode() == 0 ? Ending::Done : Ending::Failed;
        }
        if (newSize != size)
            idle.restart();
        size = newSize;
        if (idle.hasExpired(journal.timeout)) {
            process.kill();
            process.waitForFinished();
            return Ending::Hung;
        }
    }
}

void logErrors(const QByteArray &errors)
{
    for (const QByteArray &line : errors.split('\n')) {
        if (!line.isEmpty())
            qCWarning(platformLog).noquote() << QString::fromUtf8(line);
    }
}

/// Runs the program with its output in the file at @p target. Returns whether it succeeded; it may
/// have written nothing.
bool runInto(const QString &target, const QStringList &arguments, const Journal &journal)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(target, QIODevice::Truncate);
    process.start(journal.program, arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted()) {
        qCWarning(platformLog) << "cannot run" << journal.program << process.errorString();
        return false;
    }
    QByteArray errors;
    const Ending ending = watch(process, target, journal, errors);
    logErrors(errors);
    if (ending == Ending::Hung)
        qCWarning(platformLog) << "killed after" << journal.timeout
                               << "ms without output:" << journal.program << arguments;
    return ending == Ending::Done;
}

} // namespace

bool exportEventLog(const QString &channel, const QString &target)
{
    return exportJournal(channel, target);
}

bool exportJournal(const QString &channel, const QString &target, const Journal &journal)
{
    const bool applications = channel == QLatin1String("Application");
    const QStringList arguments{
        applications ? QStringLiteral("--user") : QStringLiteral("--system"),
        QStringLiteral("--no-pager"), QStringLiteral("-o"), QStringLiteral("export")};
    const bool exported = runInto(target, arguments, journal);
    if (exported && QFileInfo(target).size() > 0)
        return true;
    QFile::remove(target);
    // Many users have no journal of their own, which must not fail the system's. A system journal
    // without events means that there is none.
    if (exported)
        qCWarning(platformLog) << "no events:" << channel;
    return exported && applications;
}

#include "EventLog.h"

#include "PlatformLog.h"
#include "linux/LinuxSeams.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace {

constexpr int pollInterval = 200;        // between two looks at the program, milliseconds
constexpr int maxErrorBytes = 64 * 1024; // of what the program says on its standard error

enum class Ending { Done, Failed, Hung };

/// Waits for the end of @p process, however long, as long as @p target grows. What it says in the
/// meantime is added to @p errors.
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
        const qint64 now = QFileInfo(target).size();
        if (ended) {
            const bool well = process.exitStatus() == QProcess::NormalExit;
            return well && process.exitCode() == 0 ? Ending::Done : Ending::Failed;
        }
        if (now != size)
            idle.restart();
        size = now;
        if (idle.hasExpired(journal.timeout)) {
            process.kill();
            process.waitForFinished();
            return Ending::Hung;
        }
    }
}

void print(const QByteArray &errors)
{
    for (const QByteArray &line : errors.split('\n')) {
        if (!line.isEmpty())
            qCWarning(platformLog).noquote() << QString::fromUtf8(line);
    }
}

/// Runs the program, which writes the file at @p target, or would, had it anything to write. False:
/// it did not run to a good end.
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
    print(errors);
    if (ending == Ending::Hung)
        qCWarning(platformLog) << "ended, because it wrote nothing for" << journal.timeout
                               << "ms:" << journal.program << arguments;
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
    // Many a user has no journal of one's own, and that must not cost the system's. A system
    // without an event, though, keeps no journal at all.
    if (exported)
        qCWarning(platformLog) << "no events:" << channel;
    return exported && applications;
}

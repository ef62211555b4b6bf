#include "EventLog.h"

#include "linux/Sources.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace {

constexpr int pollInterval = 200;        // between two looks at the program, milliseconds
constexpr int maxErrorBytes = 64 * 1024; // of what the program says on its standard error

/// Waits for the end of @p process, however long, as long as @p target grows. False: it was ended,
/// because it hung. What it says in the meantime is added to @p errors.
bool outlasts(QProcess &process, const QString &target, int timeout, QByteArray &errors)
{
    QElapsedTimer idle;
    idle.start();
    qint64 size = 0;
    for (;;) {
        const bool ended = process.waitForFinished(pollInterval);
        errors.append(process.readAllStandardError());
        errors.truncate(maxErrorBytes);
        if (ended || process.state() == QProcess::NotRunning)
            return true;
        const qint64 now = QFileInfo(target).size();
        if (now != size)
            idle.restart();
        size = now;
        if (idle.hasExpired(timeout)) {
            process.kill();
            process.waitForFinished();
            return false;
        }
    }
}

void print(const QByteArray &errors)
{
    for (const QByteArray &line : errors.split('\n')) {
        if (!line.isEmpty())
            qDebug().noquote() << QString::fromUtf8(line);
    }
}

/// Whether the program wrote the file at @p target, or would have, had it had anything to write.
bool runInto(const QString &target, const QStringList &arguments, const Journal &journal)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(target, QIODevice::Truncate);
    process.start(journal.program, arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted()) {
        qDebug() << "cannot run" << journal.program << process.errorString();
        return false;
    }
    QByteArray errors;
    const bool ended = outlasts(process, target, journal.timeout, errors);
    print(errors);
    if (!ended)
        qDebug() << "ended, because it wrote nothing for" << journal.timeout
                 << "ms:" << journal.program << arguments;
    return ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
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
        qDebug() << "no events:" << channel;
    return exported && applications;
}

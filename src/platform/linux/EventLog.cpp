#include "EventLog.h"

#include "linux/LinuxSeams.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <utility>

namespace {

constexpr int pollInterval = 200;        // between two looks at the program, milliseconds
constexpr qint64 blockSize = 1 << 20;    // bytes
constexpr int maxErrorBytes = 64 * 1024; // of what the program says on its standard error

enum class Ending { Done, Failed, Hung, TooLong };

/// Waits for the end of @p process, however long, as long as @p target grows, but not too far. What
/// it says in the meantime is added to @p errors.
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
        const bool tooLong = now > journal.most;
        if (ended && !tooLong) {
            const bool well = process.exitStatus() == QProcess::NormalExit;
            return well && process.exitCode() == 0 ? Ending::Done : Ending::Failed;
        }
        if (now != size)
            idle.restart();
        size = now;
        if (tooLong || idle.hasExpired(journal.timeout)) {
            process.kill();
            process.waitForFinished();
            return tooLong ? Ending::TooLong : Ending::Hung;
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

/// Runs the program, which writes the file at @p target, or would, had it anything to write.
Ending runInto(const QString &target, const QStringList &arguments, const Journal &journal)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(target, QIODevice::Truncate);
    process.start(journal.program, arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted()) {
        qDebug() << "cannot run" << journal.program << process.errorString();
        return Ending::Failed;
    }
    QByteArray errors;
    const Ending ending = watch(process, target, journal, errors);
    print(errors);
    if (ending == Ending::Hung)
        qDebug() << "ended, because it wrote nothing for" << journal.timeout
                 << "ms:" << journal.program << arguments;
    return ending;
}

/// How many events of the export in the file at @p path fit into @p most bytes, when the others are
/// like them; a tenth less, as they are not.
qint64 eventsThatFit(const QString &path, qint64 most)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    qint64 events = 0; // each ends with an empty line
    char before = '\0';
    for (QByteArray block = file.read(blockSize); !block.isEmpty(); block = file.read(blockSize)) {
        for (const char c : std::as_const(block)) {
            events += c == '\n' && before == '\n' ? 1 : 0;
            before = c;
        }
    }
    return qint64(0.9 * double(events) * double(most) / double(qMax(file.size(), qint64(1))));
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
    Ending ending = runInto(target, arguments, journal);
    qint64 newest = ending == Ending::TooLong ? eventsThatFit(target, journal.most) : 0;
    for (; ending == Ending::TooLong && newest > 0; newest /= 2) {
        qDebug() << "too many events for a zip, only the newest:" << channel << newest;
        ending = runInto(target, arguments + QStringList(QStringLiteral("--lines=%1").arg(newest)),
                         journal);
    }
    const bool exported = ending == Ending::Done;
    if (exported && QFileInfo(target).size() > 0)
        return true;
    QFile::remove(target);
    // Many a user has no journal of one's own, and that must not cost the system's. A system
    // without an event, though, keeps no journal at all.
    if (exported)
        qDebug() << "no events:" << channel;
    return exported && applications;
}

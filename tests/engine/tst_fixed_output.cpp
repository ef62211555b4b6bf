#include "Faults.h"
#include "FullJob.h"
#include "Machine.h"
#include "Text.h"

#include <QProcess>

#include <stdexcept>

/// An export prints only the fixed texts by default, whatever goes wrong.
class FixedOutput : public QObject
{
    Q_OBJECT

private slots:
    void isNoMoreWithEveryFaultAtOnce();
    void isNoMoreWhenTheDiskFillsWhilePacking();
    void isNothingForRequestsThatAreDroppedAtTheEnd();
};

namespace {

/// A log that cannot be copied; empty if the system cannot create one.
QString pipeInPlaceOfALog(const FullJob &job)
{
    const QString pipe = job.f.base() + text("QZviewer/pipe.log");
    return QProcess::execute(text("mkfifo"), {pipe}) == 0 ? pipe : QString();
}

/// Blocks every file that the worker writes.
void blockStaging(FullJob &job)
{
    job.f.scratch.file(text("QZSDK/LogInfo/left.txt"), "left by a killed run");
    if (!onWindows()) // a leading full stop does not hide files there
        job.f.scratch.file(text("QZSDK/LogInfo/.hidden"), "stays, and the folder with it");
    job.f.scratch.folder(text("QZSDK/LogInfo/NICInfo.txt"));
    job.f.scratch.folder(text("QZSDK/LogInfo/SystemInfo.txt"));
    job.f.log(text("gentl_cxp_log/g.txt")); // a chosen log has the folder's name
}

void breakMachine(FullJob &job)
{
    job.machine.ask = [](const QString &question) {
        if (question == text("Application"))
            throw std::runtime_error("broken");
    };
    job.machine.modules = {MemoryModuleList::Query::Unavailable, {}};
    job.machine.dumps.kernelDump = job.f.scratch.path(text("gone.dmp")); // gone after its test
    job.machine.dumps.minidumps = job.f.scratch.path(text("nowhere"));
}

QString entryLine(const QString &name, const QString &folder, const QString &root)
{
    return QStringLiteral("\"%1\" \"%2\" \"%3\"").arg(name, folder, root);
}

} // namespace

void FixedOutput::isNoMoreWithEveryFaultAtOnce()
{
    FullJob job;
    ExportFixture &f = job.f;
    blockStaging(job);
    breakMachine(job);
    QStringList logs{job.log, f.base() + text("QZviewer/gone.log"),
                     f.scratch.file(text("elsewhere/a.log"), "the name is taken"),
                     f.scratch.file(text("elsewhere/gentl_cxp_log"), "a log")};
    QStringList expected{text("true"), text("false"), text("false"), text("true")};
    const QString pipe = pipeInPlaceOfALog(job);
    if (!pipe.isEmpty()) {
        logs.prepend(pipe);
        expected.prepend(text("false"));
    }
    f.choose(logs);
    f.worker.enqueueExport(f.scratch.folder(text("folder.zip"))); // a folder cannot be written
    QVERIFY(f.waitForExports());

    const QString staging = f.staging();
    const QString sdkLogs = staging + text("/SDKLOG");
    expected += {text("saveEventLog failed!"),
                 text(noSmallDump),
                 entryLine(text("ClientDump.zip"), staging, staging),
                 entryLine(text("left.txt"), staging, staging),
                 entryLine(text("SDKLOG/a.log"), sdkLogs, staging),
                 entryLine(text("SDKLOG/gentl_cxp_log"), sdkLogs, staging),
                 entryLine(text("SystemDmp.zip"), staging, staging)};
    QCOMPARE(f.output.lines(), expected);
}

void FixedOutput::isNoMoreWhenTheDiskFillsWhilePacking()
{
    if (!FileSizeLimit::available())
        QSKIP("this system cannot limit the size of files");
    ExportFixture f;
    QStringList logs;
    QStringList expected;
    for (int i = 0; i < 40; ++i) {
        logs.append(f.log(text("%1.log").arg(i, 2), QByteArray(10, char('a' + i % 26))));
        expected.append(text("true"));
    }
    for (int i = 0; i < 40; ++i)
        expected.append(
            entryLine(text("SDKLOG/%1.log").arg(i, 2), f.staging() + text("/SDKLOG"), f.staging()));
    f.choose(logs);
    {
        // Each log fits, the zip of all logs does not.
        const FileSizeLimit limit(2000);
        QVERIFY(f.exportAndWait());
    }
    QVERIFY(!QFileInfo::exists(f.zip()));
    QCOMPARE(f.output.lines(), expected);
}

void FixedOutput::isNothingForRequestsThatAreDroppedAtTheEnd()
{
    resetHub();
    const DebugCapture output;
    {
        CLogProcessThread worker; // never started
        worker.enqueueExport(text("a.zip"));
    }
    QCOMPARE(output.lines(), QStringList());
}

QTEST_GUILESS_MAIN(FixedOutput)
#include "tst_fixed_output.moc"

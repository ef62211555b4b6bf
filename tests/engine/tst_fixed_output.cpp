#include "Faults.h"
#include "FullJob.h"
#include "Machine.h"

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
    const QString pipe = job.f.base() + "QZviewer/pipe.log";
    return QProcess::execute("mkfifo", {pipe}) == 0 ? pipe : QString();
}

/// Blocks every file that the worker writes.
void blockStaging(FullJob &job)
{
    job.f.scratch.file("QZSDK/LogInfo/left.txt", "left by a killed run");
    hide(job.f.scratch.file("QZSDK/LogInfo/.hidden", "stays, and the folder with it"));
    job.f.scratch.folder("QZSDK/LogInfo/NICInfo.txt");
    job.f.scratch.folder("QZSDK/LogInfo/SystemInfo.txt");
    job.f.log("gentl_cxp_log/g.txt"); // a chosen log has the folder's name
}

void breakMachine(FullJob &job)
{
    job.machine.beforeQuery = [](const QString &probe) {
        if (probe == "Application")
            throw std::runtime_error("broken");
    };
    job.machine.modules = {MemoryModuleList::Query::Unavailable, {}};
    job.machine.dumps.kernelDump = job.f.scratch.path("gone.dmp"); // gone after its test
    job.machine.dumps.minidumps = job.f.scratch.path("nowhere");
}

QString entryLine(const QString &name, const QString &folder, const QString &root)
{
    return QString("\"%1\" \"%2\" \"%3\"").arg(name, folder, root);
}

} // namespace

void FixedOutput::isNoMoreWithEveryFaultAtOnce()
{
    FullJob job;
    ExportFixture &f = job.f;
    blockStaging(job);
    breakMachine(job);
    QStringList logs{job.log, f.base() + "QZviewer/gone.log",
                     f.scratch.file("elsewhere/a.log", "the name is taken"),
                     f.scratch.file("elsewhere/gentl_cxp_log", "a log")};
    QStringList expected{"true", "false", "false", "true"};
    const QString pipe = pipeInPlaceOfALog(job);
    if (!pipe.isEmpty()) {
        logs.prepend(pipe);
        expected.prepend("false");
    }
    f.choose(logs);
    f.worker.enqueueExport(f.scratch.folder("folder.zip")); // a folder cannot be written
    QVERIFY(f.waitForExports());

    const QString staging = f.staging();
    const QString sdkLogs = staging + "/SDKLOG";
    expected += {"saveEventLog failed!",
                 noSmallDump,
                 entryLine("ClientDump.zip", staging, staging),
                 entryLine("left.txt", staging, staging),
                 entryLine("SDKLOG/a.log", sdkLogs, staging),
                 entryLine("SDKLOG/gentl_cxp_log", sdkLogs, staging),
                 entryLine("SystemDmp.zip", staging, staging)};
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
        logs.append(f.log(QString("%1.log").arg(i, 2), QByteArray(10, char('a' + i % 26))));
        expected.append("true");
    }
    for (int i = 0; i < 40; ++i)
        expected.append(
            entryLine(QString("SDKLOG/%1.log").arg(i, 2), f.staging() + "/SDKLOG", f.staging()));
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
        worker.enqueueExport("a.zip");
    }
    QCOMPARE(output.lines(), QStringList());
}

QTEST_GUILESS_MAIN(FixedOutput)
#include "tst_fixed_output.moc"

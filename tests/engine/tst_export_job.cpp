#include "Diagnostics.h"
#include "ExportFixture.h"
#include "FakeSystem.h"
#include "Faults.h"
#include "FullJob.h"
#include "Machine.h"
#include "Noise.h"

#include <QMetaMethod>

#include <algorithm>
#include <functional>

class ExportJob : public QObject
{
    Q_OBJECT

private slots:
    void declaresOneSignalAndNoSlots();
    void setsTheSpareWorkPathOfTheHub();
    void packsTheChosenLogsUnderTheirNames();
    void readsThePathsAtTheHandOverSoThatItemsMayVanish();
    void packsTheGenTlLogsOfTheSource();
    void takesNoSubFoldersOfTheGenTlLogs();
    void takesNoLinksAmongTheGenTlLogs();
    void copiesOnlyTheGenTlLogsWhenNoLogIsChosen();
    void makesNoSdkFolderWithoutLogsToCopy();
    void copiesChosenLogsEvenWithTheSdkLogFlagOff();
    void consumesTheChosenLogs();
    void doesNotCopyOverANameThatIsTaken();
    void printsTheResultsInTheOrderOfTheLogsWhenTheFirstIsSlow();
    void removesTheStagingFolderAfterPacking();
    void packsNothingElseWhenOnlySdkLogsAreRequested();
    void keepsSdkLogOnlyWhenItsStepWasSkipped();
    void clearsSdkLogOnlyOnceHonoured();
    void readsTheFlagsWhenARequestsTurnComes();
    void keepsTheSourceThatItBeganWith();
    void stagesForItsOwnerOnly_data();
    void stagesForItsOwnerOnly();
    void processesQueuedRequestsInOrder();
    void collectsButWritesNoZipForAnEmptyPath();
    void keepsSdkLogOnlyOfARequestWithoutAPath();
    void dropsTheRequestWhenTheStagingFolderCannotBeMade();
    void dropsTheRequestWhenTheSdkFolderCannotBeMade();
    void keepsTheChosenLogsOfADroppedRequest();
    void prefersLogsChosenSinceToThoseOfADroppedRequest_data();
    void prefersLogsChosenSinceToThoseOfADroppedRequest();
    void finishesTheCurrentRequestBeforeItEnds();
    void logsWhichRequestsItDropsAtTheEnd();
    void endsWhenRunningIsCleared();
    void reportsItsProgress();
    void reportsNoProgressAfterADroppedRequest();
};

namespace {

/// Runs a function when a message is printed, on the thread that prints it.
class OnMessage
{
public:
    OnMessage(const QString &message, std::function<void()> act)
    {
        awaited = message;
        action = std::move(act);
        previous = qInstallMessageHandler(handle);
    }
    ~OnMessage() { qInstallMessageHandler(previous); }
    OnMessage(const OnMessage &) = delete;
    OnMessage &operator=(const OnMessage &) = delete;

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        previous(type, context, message);
        if (message == awaited)
            action();
    }

    static inline QString awaited;
    static inline std::function<void()> action;
    static inline QtMessageHandler previous = nullptr;
};

} // namespace

void ExportJob::declaresOneSignalAndNoSlots()
{
    const QMetaObject &meta = CLogProcessThread::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    const QMetaMethod method = meta.method(meta.methodOffset());
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
    QCOMPARE(method.methodSignature(), QByteArray("closeWaitDlg()"));
}

void ExportJob::setsTheSpareWorkPathOfTheHub()
{
    ExportFixture f;
    QCOMPARE(hub().spareWorkPath, "D:/Vantrel");
}

void ExportJob::packsTheChosenLogsUnderTheirNames()
{
    ExportFixture f;
    QVERIFY(f.exportAndWait({f.log("a.log", "first\n"), f.log("日志 1.log", "second\n")}));
    QCOMPARE(zipContents(f.zip()), (ExportFixture::Contents{{"SDKLOG/a.log", "first\n"},
                                                            {"SDKLOG/日志 1.log", "second\n"}}));
    // One result per copy, then one line per packed entry.
    QCOMPARE(f.output.lines(),
             QStringList({"true", "true",
                          QString("\"SDKLOG/a.log\" \"%1/SDKLOG\" \"%1\"").arg(f.staging()),
                          QString("\"SDKLOG/日志 1.log\" \"%1/SDKLOG\" \"%1\"").arg(f.staging())}));
}

void ExportJob::readsThePathsAtTheHandOverSoThatItemsMayVanish()
{
    ExportFixture f;
    f.choose({f.log("a.log")}); // deletes the items before it returns
    QVERIFY(f.exportAndWait());
    QCOMPARE(zipEntryNames(f.zip()), QStringList("SDKLOG/a.log"));
}

void ExportJob::packsTheGenTlLogsOfTheSource()
{
    ExportFixture f;
    f.choose({f.log("a.log")});
    f.log("gentl_cxp_log/one.txt", "1");
    f.log("gentl_cxp_log/two.bin", "2");
    QVERIFY(f.exportAndWait());
    QCOMPARE(zipEntryNames(f.zip()), QStringList({"SDKLOG/a.log", "SDKLOG/gentl_cxp_log/one.txt",
                                                  "SDKLOG/gentl_cxp_log/two.bin"}));
}

void ExportJob::takesNoSubFoldersOfTheGenTlLogs()
{
    ExportFixture f;
    f.log("gentl_cxp_log/deeper/one.txt", "1");
    f.log("gentl_cxp_log/two.txt", "2");
    QVERIFY(f.exportAndWait());
    QCOMPARE(zipEntryNames(f.zip()), QStringList("SDKLOG/gentl_cxp_log/two.txt"));
}

void ExportJob::takesNoLinksAmongTheGenTlLogs()
{
    ExportFixture f;
    f.log("gentl_cxp_log/file.txt", "1");
    if (!makeLink(f.scratch.file("elsewhere.txt", "2"),
                  f.scratch.path("QZSDK/QZviewer/gentl_cxp_log/link.txt")))
        QSKIP("links cannot be created on this system");
    QVERIFY(f.exportAndWait());
    QCOMPARE(zipContents(f.zip()),
             (ExportFixture::Contents{{"SDKLOG/gentl_cxp_log/file.txt", "1"}}));
}

void ExportJob::copiesOnlyTheGenTlLogsWhenNoLogIsChosen()
{
    ExportFixture f;
    f.log("not chosen.log");
    f.log("gentl_cxp_log/one.txt", "1");
    QVERIFY(f.exportAndWait());
    QCOMPARE(zipContents(f.zip()),
             (ExportFixture::Contents{{"SDKLOG/gentl_cxp_log/one.txt", "1"}}));
}

void ExportJob::makesNoSdkFolderWithoutLogsToCopy()
{
    ExportFixture f;
    f.worker.enqueueExport(QString()); // writes no zip and keeps the staging folder
    f.worker.start();
    QVERIFY(
        QTest::qWaitFor([&] { return QFileInfo::exists(f.staging()); }, ExportFixture::patience));
    QVERIFY(f.ends());
    QVERIFY(QDir(f.staging()).isEmpty());
    QVERIFY(f.output.lines().isEmpty());
}

void ExportJob::copiesChosenLogsEvenWithTheSdkLogFlagOff()
{
    ExportFixture f;
    hub().sdkLog = false;
    QVERIFY(f.exportAndWait({f.log("a.log")}));
    QCOMPARE(zipEntryNames(f.zip()), QStringList("SDKLOG/a.log"));
}

void ExportJob::consumesTheChosenLogs()
{
    ExportFixture f;
    QVERIFY(f.exportAndWait({f.log("a.log")}));
    QVERIFY(f.exportAndWait());
    QCOMPARE(zipContents(f.zip()), ExportFixture::Contents());
}

void ExportJob::doesNotCopyOverANameThatIsTaken()
{
    const Diagnostics diagnostics;
    ExportFixture f;
    const QString here = f.log("a.log", "from here\n");
    const QString there = f.scratch.file("QZSDK/other/a.log", "from there\n");
    QVERIFY(f.exportAndWait({here, there}));
    QCOMPARE(zipContents(f.zip()), (ExportFixture::Contents{{"SDKLOG/a.log", "from here\n"}}));
    QCOMPARE(f.output.lines().at(0), "true");
    QVERIFY(f.output.lines().at(1).startsWith(QString("not copied: \"%1\"").arg(there)));
    QCOMPARE(f.output.lines().at(2), "false");
}

void ExportJob::printsTheResultsInTheOrderOfTheLogsWhenTheFirstIsSlow()
{
    ExportFixture f;
    const QString slow = f.scratch.sparseFile("QZSDK/QZviewer/slow.log",
                                              64 << 20); // takes longer than the others
    QVERIFY(f.exportAndWait({slow, f.scratch.path("gone.log"), f.log("b.log")}));
    QCOMPARE(f.output.lines().mid(0, 3), QStringList({"true", "false", "true"}));
}

void ExportJob::removesTheStagingFolderAfterPacking()
{
    ExportFixture f;
    QVERIFY(f.exportAndWait({f.log("a.log")}));
    QVERIFY(!QFileInfo::exists(f.staging()));
}

void ExportJob::packsNothingElseWhenOnlySdkLogsAreRequested()
{
    ExportFixture f;
    hub().clientDump = true;
    f.log("crash.dmp");
    f.choose({f.log("a.log")});
    f.worker.setSdkLogOnly(true);
    QVERIFY(f.exportAndWait());
    QCOMPARE(zipEntryNames(f.zip()), QStringList("SDKLOG/a.log"));
}

void ExportJob::keepsSdkLogOnlyWhenItsStepWasSkipped()
{
    ExportFixture f;
    hub().sdkLog = false;
    hub().clientDump = true;
    f.worker.setSdkLogOnly(true);
    QVERIFY(f.exportAndWait());
    // Nothing to copy: the step is skipped, and the other items run.
    QCOMPARE(zipEntryNames(f.zip()), QStringList("ClientDump.zip"));

    QVERIFY(f.exportAndWait({f.log("a.log")}));
    QCOMPARE(zipEntryNames(f.zip()), QStringList("SDKLOG/a.log"));
}

void ExportJob::clearsSdkLogOnlyOnceHonoured()
{
    ExportFixture f;
    hub().clientDump = true;
    f.worker.setSdkLogOnly(true);
    QVERIFY(f.exportAndWait());
    QCOMPARE(zipContents(f.zip()), ExportFixture::Contents());
    QVERIFY(f.exportAndWait());
    QCOMPARE(zipEntryNames(f.zip()), QStringList("ClientDump.zip"));
}

void ExportJob::readsTheFlagsWhenARequestsTurnComes()
{
    ExportFixture f;
    const QString second = f.scratch.path("second.zip");
    f.worker.enqueueExport(f.zip());
    f.worker.enqueueExport(second);
    // On the worker thread, after the first request and before the second.
    connect(
        &f.worker, &CLogProcessThread::closeWaitDlg, &f.worker, [] { hub().clientDump = true; },
        Qt::DirectConnection);
    QVERIFY(f.waitForExports(2));
    QCOMPARE(zipContents(f.zip()), ExportFixture::Contents());
    QCOMPARE(zipEntryNames(second), QStringList("ClientDump.zip"));
}

void ExportJob::keepsTheSourceThatItBeganWith()
{
    FakeSystem machine;
    ExportFixture f(machine.probes());
    hub().nicInfo = true;
    hub().clientDump = true;
    f.log("crash.dmp", "of the first source");
    f.scratch.file("QZSDK/other/crash.dmp", "of the second source");
    machine.beforeQuery = [&f](const QString &probe) {
        if (probe == "adapters") // comes before the dumps
            f.worker.setLogSourceFolder("other");
    };
    QVERIFY(f.exportAndWait());
    const QByteArray dumps = zipContents(f.zip()).value("ClientDump.zip");
    QCOMPARE(zipContents(f.scratch.file("dumps.zip", dumps)),
             (ExportFixture::Contents{{"crash.dmp", "of the first source"}}));
}

void ExportJob::stagesForItsOwnerOnly_data()
{
    QTest::addColumn<bool>("leftByAKilledRun");
    QTest::newRow("made") << false;
    QTest::newRow("there") << true;
}

void ExportJob::stagesForItsOwnerOnly()
{
    if (onWindows())
        QSKIP("the folder around it decides who may enter it there");
    QFETCH(bool, leftByAKilledRun);
    FakeSystem machine;
    ExportFixture f(machine.probes());
    if (leftByAKilledRun)
        QVERIFY(QFile::setPermissions(f.scratch.folder("QZSDK/LogInfo"), Everybody::mayDoAll));
    hub().nicInfo = true;
    QFile::Permissions seen = {};
    machine.beforeQuery = [&](const QString &) { seen |= QFile::permissions(f.staging()); };
    QVERIFY(f.exportAndWait());
    QCOMPARE(seen & QFile::Permissions(0x7077),
             QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QCOMPARE(QFile::permissions(f.zip()) & QFile::Permissions(0x7077),
             QFile::ReadOwner | QFile::WriteOwner);
}

void ExportJob::processesQueuedRequestsInOrder()
{
    ExportFixture f;
    f.choose({f.log("a.log")});
    for (const char *name : {"1.zip", "2.zip", "3.zip"})
        f.worker.enqueueExport(f.scratch.path(name));
    QVERIFY(f.waitForExports(3));
    // The first request has taken the chosen log.
    QCOMPARE(zipEntryNames(f.scratch.path("1.zip")), QStringList("SDKLOG/a.log"));
    QCOMPARE(zipContents(f.scratch.path("2.zip")), ExportFixture::Contents());
    QCOMPARE(zipContents(f.scratch.path("3.zip")), ExportFixture::Contents());
}

void ExportJob::collectsButWritesNoZipForAnEmptyPath()
{
    ExportFixture f;
    hub().clientDump = true;
    f.log("crash.dmp", "dump");
    f.choose({f.log("a.log", "kept\n")});
    f.worker.setSdkLogOnly(true); // only applies to requests with a zip path
    f.worker.enqueueExport(QString());
    QVERIFY(f.waitForOutput("true"));
    QVERIFY(f.ends());
    QCOMPARE(f.answered, 0);
    QCOMPARE(f.scratch.read("QZSDK/LogInfo/SDKLOG/a.log"), QByteArray("kept\n"));
    QCOMPARE(zipContents(f.staging() + "/ClientDump.zip"),
             (ExportFixture::Contents{{"crash.dmp", "dump"}}));
}

void ExportJob::keepsSdkLogOnlyOfARequestWithoutAPath()
{
    ExportFixture f;
    hub().clientDump = true;
    f.choose({f.log("a.log")});
    f.worker.setSdkLogOnly(true);
    f.worker.enqueueExport(QString());
    QVERIFY(f.waitForOutput("true"));
    QVERIFY(f.ends());
    QVERIFY(QDir(f.staging()).removeRecursively());

    f.worker.setRunning(true);
    QVERIFY(f.exportAndWait({f.log("b.log")}));
    QCOMPARE(zipEntryNames(f.zip()), QStringList("SDKLOG/b.log"));
}

void ExportJob::dropsTheRequestWhenTheStagingFolderCannotBeMade()
{
    ExportFixture f;
    f.worker.setBasePath(f.scratch.path("missing/QZSDK/"));
    f.worker.enqueueExport(f.zip());
    QVERIFY(f.waitForOutput("mkdir failed"));

    f.worker.setBasePath(f.base());
    f.worker.enqueueExport(f.scratch.path("next.zip"));
    QVERIFY(f.waitForExports());
    QVERIFY(!QFileInfo::exists(f.zip()));
    QVERIFY(QFileInfo::exists(f.scratch.path("next.zip")));
    QCOMPARE(f.output.lines(), QStringList("mkdir failed"));
}

void ExportJob::dropsTheRequestWhenTheSdkFolderCannotBeMade()
{
    ExportFixture f;
    f.scratch.file("QZSDK/LogInfo/SDKLOG", "a file in the way");
    f.choose({f.log("a.log")});
    f.worker.enqueueExport(f.zip());
    QVERIFY(f.waitForOutput("mkpath failed"));
    QVERIFY(f.ends());
    QCOMPARE(f.answered, 0);
    QVERIFY(!QFileInfo::exists(f.zip()));
}

void ExportJob::keepsTheChosenLogsOfADroppedRequest()
{
    ExportFixture f;
    const QString inTheWay = f.scratch.file("QZSDK/LogInfo/SDKLOG", "a file");
    f.choose({f.log("a.log")});
    f.worker.enqueueExport(f.zip());
    QVERIFY(f.waitForOutput("mkpath failed"));
    QVERIFY(QFile::remove(inTheWay));
    QVERIFY(f.exportAndWait());
    QVERIFY(zipContents(f.zip()).contains("SDKLOG/a.log"));
}

void ExportJob::prefersLogsChosenSinceToThoseOfADroppedRequest_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::newRow("another") << QStringList("b.log");
    QTest::newRow("none") << QStringList();
}

void ExportJob::prefersLogsChosenSinceToThoseOfADroppedRequest()
{
    QFETCH(QStringList, names);
    ExportFixture f;
    const QString inTheWay = f.scratch.file("QZSDK/LogInfo/SDKLOG", "a file");
    QStringList chosenSince;
    for (const QString &name : names)
        chosenSince.append(f.log(name));
    f.choose({f.log("a.log")});
    f.worker.enqueueExport(f.zip());
    {
        const OnMessage drop("mkpath failed", [&] { f.choose(chosenSince); });
        QVERIFY(f.waitForOutput("mkpath failed"));
        QVERIFY(f.ends());
    }
    QVERIFY(QFile::remove(inTheWay));
    f.worker.setRunning(true);
    QVERIFY(f.exportAndWait());
    QStringList expected;
    for (const QString &name : names)
        expected.append("SDKLOG/" + name);
    QCOMPARE(zipContents(f.zip()).keys(), expected);
}

void ExportJob::finishesTheCurrentRequestBeforeItEnds()
{
    QString zip;
    ScratchFolder kept;
    {
        ExportFixture f;
        zip = kept.path("whole.zip");
        f.choose({f.log("a.log", QByteArray(20 << 20, 'x'))});
        f.worker.enqueueExport(zip);
        f.worker.start();
        QVERIFY(QTest::qWaitFor([&] { return QFileInfo::exists(f.staging()); },
                                ExportFixture::patience));
    }
    QCOMPARE(zipContents(zip).value("SDKLOG/a.log").size(), 20 << 20);
}

void ExportJob::logsWhichRequestsItDropsAtTheEnd()
{
    const Diagnostics diagnostics;
    resetHub();
    DebugCapture output;
    {
        CLogProcessThread worker; // never started
        worker.enqueueExport("a.zip");
        worker.enqueueExport("b.zip");
    }
    QCOMPARE(output.lines(),
             QStringList({"export dropped: \"a.zip\"", "export dropped: \"b.zip\""}));
}

void ExportJob::endsWhenRunningIsCleared()
{
    ExportFixture f;
    f.worker.start();
    QVERIFY(f.worker.isRunning());
    QVERIFY(f.ends());
}

void ExportJob::reportsItsProgress()
{
    FakeSystem machine;
    ExportFixture f(machine.probes());
    FullJob::chooseEveryItem();
    machine.dumps.minidumps = f.scratch.path("none/"); // an empty path is the disk on Windows
    QVector<double> seen;
    machine.beforeQuery = [&](const QString &) { seen.append(f.worker.progress()); };
    // On the worker thread, after packing.
    connect(
        &f.worker, &CLogProcessThread::closeWaitDlg, &f.worker,
        [&] { seen.append(f.worker.progress()); }, Qt::DirectConnection);
    QVERIFY(f.worker.progress() < 0);
    f.log("crash.dmp", noise(2 << 20));
    QVERIFY(f.exportAndWait({f.log("a.log", noise(8 << 20))}));
    QVERIFY(f.ends());
    QVERIFY(f.worker.progress() < 0);

    QCOMPARE(seen.size(), 7); // two event logs, memory, modules, adapters, dumps, the end
    QVERIFY(seen.constFirst() > 0.05 && seen.constFirst() < 0.3); // log copied, not packed
    QVERIFY(std::is_sorted(seen.cbegin(), seen.cend()));
    QVERIFY(seen.constLast() > 0.9 && seen.constLast() < 1);
}

void ExportJob::reportsNoProgressAfterADroppedRequest()
{
    ExportFixture f;
    f.worker.setBasePath(f.scratch.path("missing/QZSDK/"));
    f.worker.enqueueExport(f.zip());
    QVERIFY(f.waitForOutput("mkdir failed"));
    QVERIFY(f.ends());
    QVERIFY(f.worker.progress() < 0);
}

QTEST_GUILESS_MAIN(ExportJob)
#include "tst_export_job.moc"

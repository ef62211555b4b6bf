#include "EventLogs.h"

#include "ExportFixture.h"
#include "FakeSystem.h"

class EventLogs : public QObject
{
    Q_OBJECT

private slots:
    void aFreePathIsTakenAsItIs();
    void takenPathsAreCountedUp();
    void aGapInTheNumbersIsFilled();
    void aFolderOfThatNameTakesItToo();
    void namesWithPercentSignsStayAsTheyAre();
    void thereIsNoLastNumber();

    void anEmptyFolderIsRefusedWithoutTouchingTheEventLog();
    void applicationComesFirstThenSystem();
    void takenTargetsGetANumber();
    void aRefusedApplicationChannelLeavesNoSystemExport();
    void aRefusedSystemChannelFailsButKeepsTheApplications();
};

namespace {

QString uniqueIn(const ScratchFolder &scratch)
{
    return uniqueFilePath(scratch.path(), "a", ".b");
}

} // namespace

void EventLogs::aFreePathIsTakenAsItIs()
{
    const ScratchFolder scratch;
    QCOMPARE(uniqueIn(scratch), scratch.path("a.b"));
    QVERIFY(!QFile::exists(scratch.path("a.b")));
}

void EventLogs::takenPathsAreCountedUp()
{
    ScratchFolder scratch;
    scratch.file("a.b");
    QCOMPARE(uniqueIn(scratch), scratch.path("a(1).b"));
    scratch.file("a(1).b");
    QCOMPARE(uniqueIn(scratch), scratch.path("a(2).b"));
}

void EventLogs::aGapInTheNumbersIsFilled()
{
    ScratchFolder scratch;
    scratch.file("a.b");
    scratch.file("a(2).b");
    QCOMPARE(uniqueIn(scratch), scratch.path("a(1).b"));
}

void EventLogs::aFolderOfThatNameTakesItToo()
{
    ScratchFolder scratch;
    scratch.folder("a.b");
    QCOMPARE(uniqueIn(scratch), scratch.path("a(1).b"));
}

void EventLogs::namesWithPercentSignsStayAsTheyAre()
{
    ScratchFolder scratch;
    const QString folder = scratch.folder("100%1");
    scratch.file("100%1/%2.%1");
    QCOMPARE(uniqueFilePath(folder, "%2", ".%1"), folder + "/%2(1).%1");
}

void EventLogs::thereIsNoLastNumber()
{
    ScratchFolder scratch;
    scratch.file("a.b");
    for (int i = 1; i <= 1000; ++i)
        scratch.file(QString("a(%1).b").arg(i));
    QCOMPARE(uniqueIn(scratch), scratch.path("a(1001).b"));
}

void EventLogs::anEmptyFolderIsRefusedWithoutTouchingTheEventLog()
{
    FakeSystem machine;
    ExportFixture f(machine.probes());
    machine.calledProbes.clear();
    QVERIFY(!f.worker.saveEventLog(QString()));
    QCOMPARE(machine.calledProbes, QStringList());
    QCOMPARE(f.output.lines(), QStringList());
}

void EventLogs::applicationComesFirstThenSystem()
{
    FakeSystem machine;
    ExportFixture f(machine.probes());
    machine.calledProbes.clear();
    QVERIFY(f.worker.saveEventLog(f.scratch.path()));
    QCOMPARE(machine.calledProbes, QStringList({"Application", "System"}));
    QCOMPARE(machine.exportedTargets, QStringList({f.scratch.path("ApplicationEvents.evtx"),
                                                   f.scratch.path("SystemEvents.evtx")}));
    QCOMPARE(f.output.lines(), QStringList());
}

void EventLogs::takenTargetsGetANumber()
{
    FakeSystem machine;
    ExportFixture f(machine.probes());
    f.scratch.file("ApplicationEvents.evtx", "older");
    f.scratch.file("SystemEvents.evtx", "older");
    f.scratch.file("SystemEvents(1).evtx", "older");
    QVERIFY(f.worker.saveEventLog(f.scratch.path()));
    QCOMPARE(machine.exportedTargets, QStringList({f.scratch.path("ApplicationEvents(1).evtx"),
                                                   f.scratch.path("SystemEvents(2).evtx")}));
    QCOMPARE(f.scratch.read("ApplicationEvents.evtx"), QByteArray("older"));
}

void EventLogs::aRefusedApplicationChannelLeavesNoSystemExport()
{
    FakeSystem machine;
    machine.refusedChannel = "Application";
    ExportFixture f(machine.probes());
    machine.calledProbes.clear();
    QVERIFY(!f.worker.saveEventLog(f.scratch.path()));
    QCOMPARE(machine.calledProbes, QStringList("Application"));
}

void EventLogs::aRefusedSystemChannelFailsButKeepsTheApplications()
{
    FakeSystem machine;
    machine.refusedChannel = "System";
    ExportFixture f(machine.probes());
    QVERIFY(!f.worker.saveEventLog(f.scratch.path()));
    QCOMPARE(f.scratch.read("ApplicationEvents.evtx"), QByteArray("events of Application"));
    QCOMPARE(f.output.lines(), QStringList()); // the caller prints the failure
}

QTEST_GUILESS_MAIN(EventLogs)
#include "tst_event_logs.moc"

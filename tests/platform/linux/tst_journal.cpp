#include "DebugCapture.h"
#include "Diagnostics.h"
#include "JournalScript.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTest>
#include <QThread>

#include <memory>

class JournalExport : public QObject
{
    Q_OBJECT

private slots:
    void requestsTheUsersOrTheSystemsEventsLosslessly_data();
    void requestsTheUsersOrTheSystemsEventsLosslessly();
    void storesTheOutputByteForByte();
    void replacesAnExistingFile();
    void runsNoShell();
    void logsWhatTheProgramWritesToStandardError();
    void endlessErrorsTakeNoMemory();
    void aFailingProgramLeavesNoFile();
    void saysNothingByDefault();
    void aCrashingProgramLeavesNoFile();
    void aMissingProgramLeavesNoFile();
    void aProgramThatHangsIsKilled();
    void aSlowProgramThatKeepsWritingIsNotKilled();
    void aUserWithoutEventsIsNoFailure();
    void aSystemWithoutEventsKeepsNoJournal();
    void aTargetThatCannotBeWrittenFails();
    void worksOnAThreadWithoutEventLoop();
};

namespace {

const QString application = "Application";
const QString system_ = "System";

} // namespace

void JournalExport::requestsTheUsersOrTheSystemsEventsLosslessly_data()
{
    QTest::addColumn<QString>("channel");
    QTest::addColumn<QByteArray>("arguments");
    QTest::newRow("user's") << application << QByteArray("--user\n--no-pager\n-o\nexport\n");
    QTest::newRow("system's") << system_ << QByteArray("--system\n--no-pager\n-o\nexport\n");
}

void JournalExport::requestsTheUsersOrTheSystemsEventsLosslessly()
{
    QFETCH(QString, channel);
    JournalScript script("printf '%s\\n' \"$@\"");
    QVERIFY(script.exportAndWait(channel));
    QTEST(script.scratch.read("events"), "arguments");
}

void JournalExport::storesTheOutputByteForByte()
{
    JournalScript script("printf 'a\\0b\\r\\n\\377'");
    const Diagnostics diagnostics("vantrel.platform");
    const DebugCapture output;
    QVERIFY(script.exportAndWait(system_));
    QCOMPARE(script.scratch.read("events"), QByteArray("a\0b\r\n\xff", 6));
    QCOMPARE(output.lines(), QStringList());
}

void JournalExport::replacesAnExistingFile()
{
    JournalScript script("echo new");
    script.scratch.file("events", "old and longer\n");
    QVERIFY(script.exportAndWait(system_));
    QCOMPARE(script.scratch.read("events"), QByteArray("new\n"));
}

void JournalExport::runsNoShell()
{
    ScratchFolder scratch;
    Journal journal;
    journal.program = scratch.path(QString("journal; touch '%1'").arg(scratch.path("harm")));
    const DebugCapture output;
    QVERIFY(!exportJournal(system_, scratch.path("$(touch harm)"), journal));
    QVERIFY(!QFileInfo::exists(scratch.path("harm")));
}

void JournalExport::logsWhatTheProgramWritesToStandardError()
{
    JournalScript script("echo 'Hint: 提示' >&2; echo events; echo second >&2");
    const Diagnostics diagnostics("vantrel.platform");
    const DebugCapture output;
    QVERIFY(script.exportAndWait(system_));
    QCOMPARE(output.lines(), QStringList({"Hint: 提示", "second"}));
    QCOMPARE(script.scratch.read("events"), QByteArray("events\n"));
}

void JournalExport::endlessErrorsTakeNoMemory()
{
    JournalScript script("head -c 3000000 /dev/zero | tr '\\0' x >&2; echo events");
    const Diagnostics diagnostics("vantrel.platform");
    const DebugCapture output;
    QVERIFY(script.exportAndWait(system_));
    QCOMPARE(output.lines(), QStringList(QString(64 * 1024, 'x')));
}

void JournalExport::aFailingProgramLeavesNoFile()
{
    JournalScript script("echo half; echo refused >&2; exit 1");
    const Diagnostics diagnostics("vantrel.platform");
    const DebugCapture output;
    QVERIFY(!script.exportAndWait(application));
    QVERIFY(!QFileInfo::exists(script.target()));
    QCOMPARE(output.lines(), QStringList("refused"));
}

void JournalExport::saysNothingByDefault()
{
    JournalScript failing("echo refused >&2; exit 1");
    JournalScript silent("exit 0");
    JournalScript missing("exit 0");
    missing.journal.program = missing.scratch.path("no such program");
    const DebugCapture output;
    for (JournalScript *script : {&failing, &silent, &missing})
        QVERIFY(!script->exportAndWait(system_));
    QCOMPARE(output.lines(), QStringList());
}

void JournalExport::aCrashingProgramLeavesNoFile()
{
    JournalScript script("echo half; kill -SEGV $$");
    const DebugCapture output;
    QVERIFY(!script.exportAndWait(application));
    QVERIFY(!QFileInfo::exists(script.target()));
}

void JournalExport::aMissingProgramLeavesNoFile()
{
    const ScratchFolder scratch;
    const QString target = scratch.path("events");
    Journal journal;
    journal.program = scratch.path("no such program");
    const Diagnostics diagnostics("vantrel.platform");
    const DebugCapture output;
    QVERIFY(!exportJournal(application, target, journal));
    QVERIFY(!QFileInfo::exists(target));
    QVERIFY(output.contains(QString("cannot run \"%1\"").arg(journal.program)));
}

void JournalExport::aProgramThatHangsIsKilled()
{
    JournalScript script("echo half; echo waiting >&2; exec sleep 1000");
    script.journal.timeout = 300;
    const Diagnostics diagnostics("vantrel.platform");
    const DebugCapture output;
    QElapsedTimer time;
    time.start();
    QVERIFY(!script.exportAndWait(application));
    QVERIFY(time.elapsed() < 20000);
    QVERIFY(!QFileInfo::exists(script.target()));
    QCOMPARE(output.lines().first(), "waiting");
    QVERIFY(output.contains("killed after 300 ms without output:"));
}

void JournalExport::aSlowProgramThatKeepsWritingIsNotKilled()
{
    JournalScript script("for i in 1 2 3 4 5 6 7 8; do echo $i; sleep 0.25; done");
    script.journal.timeout = 1500; // shorter than the whole run, longer than its pauses
    QVERIFY(script.exportAndWait(system_));
    QCOMPARE(script.scratch.read("events"), QByteArray("1\n2\n3\n4\n5\n6\n7\n8\n"));
}

void JournalExport::aUserWithoutEventsIsNoFailure()
{
    JournalScript script("exit 0");
    const Diagnostics diagnostics("vantrel.platform");
    const DebugCapture output;
    QVERIFY(script.exportAndWait(application));
    QVERIFY(!QFileInfo::exists(script.target()));
    QCOMPARE(output.lines(), QStringList("no events: \"Application\""));
}

void JournalExport::aSystemWithoutEventsKeepsNoJournal()
{
    JournalScript script("echo 'No journal files were found.' >&2");
    const Diagnostics diagnostics("vantrel.platform");
    const DebugCapture output;
    QVERIFY(!script.exportAndWait(system_));
    QVERIFY(!QFileInfo::exists(script.target()));
    QCOMPARE(output.lines(),
             QStringList({"No journal files were found.", "no events: \"System\""}));
}

void JournalExport::aTargetThatCannotBeWrittenFails()
{
    JournalScript script("echo events");
    const Diagnostics diagnostics("vantrel.platform");
    const DebugCapture output;
    QVERIFY(!exportJournal(system_, script.scratch.path("nowhere/events"), script.journal));
    QVERIFY(output.contains("cannot run"));
}

void JournalExport::worksOnAThreadWithoutEventLoop()
{
    JournalScript script("echo events");
    bool exported = false;
    const std::unique_ptr<QThread> thread(
        QThread::create([&] { exported = script.exportAndWait(system_); }));
    thread->start();
    QVERIFY(thread->wait(20000));
    QVERIFY(exported);
    QCOMPARE(script.scratch.read("events"), QByteArray("events\n"));
}

QTEST_GUILESS_MAIN(JournalExport)
#include "tst_journal.moc"

#include "Diagnostics.h"
#include "ExportFixture.h"
#include "HeldFile.h"
#include "LogConfig.h"
#include "LogFile.h"
#include "LogLevelRewrite.h"

/// Files held open by other programs. They neither break an export nor are broken by it.
class LockedFiles : public QObject
{
    Q_OBJECT

private slots:
    void leavesOutALogThatItsWriterLocks();
    void exportsALogThatItsWriterShares_data();
    void exportsALogThatItsWriterShares();
    void overwritesNoZipThatIsOpenElsewhereAndGoesOn();
    void showsNoLogThatItsWriterLocks();
    void showsALogThatItsWriterShares();
    void setsTheLevelWhenTheFileIsReleased_data();
    void setsTheLevelWhenTheFileIsReleased();
};

void LockedFiles::leavesOutALogThatItsWriterLocks()
{
    const Diagnostics diagnostics;
    ExportFixture f;
    const QString locked = f.log("locked.log", "secret\n");
    const QString free = f.log("free.log", "free\n");
    const HeldFile held(locked, HeldFile::Others::MayNothing);
    QVERIFY(f.exportAndWait({locked, free}));
    const ExportFixture::Contents contents = zipContents(f.zip());
    QVERIFY(contents.contains("SDKLOG/free.log"));
    QVERIFY(!contents.value("SDKLOG/locked.log").contains("secret"));
    QVERIFY2(f.output.contains("locked.log"), "what is missing is logged by its name");
}

void LockedFiles::exportsALogThatItsWriterShares_data()
{
    QTest::addColumn<int>("others");
    QTest::newRow("for reading") << int(HeldFile::Others::MayRead);
    QTest::newRow("for everything") << int(HeldFile::Others::MayEverything);
}

void LockedFiles::exportsALogThatItsWriterShares()
{
    QFETCH(int, others);
    ExportFixture f;
    const QString log = f.log("busy.log", "still being written\n");
    const HeldFile held(log, HeldFile::Others(others));
    QVERIFY(f.exportAndWait({log}));
    QCOMPARE(zipContents(f.zip()).value("SDKLOG/busy.log"), QByteArray("still being written\n"));
}

void LockedFiles::overwritesNoZipThatIsOpenElsewhereAndGoesOn()
{
    ExportFixture f;
    const QString log = f.log("a.log", "line\n");
    const QString open = f.scratch.file("open.zip", "somebody looks at it");
    const HeldFile held(open, HeldFile::Others::MayRead);
    f.choose({log});
    f.worker.enqueueExport(open);
    QVERIFY(f.waitForExports());
    QCOMPARE(f.scratch.read("open.zip"), QByteArray("somebody looks at it"));

    QVERIFY(f.exportAndWait({log}));
    QCOMPARE(zipContents(f.zip()).value("SDKLOG/a.log"), QByteArray("line\n"));
}

void LockedFiles::showsNoLogThatItsWriterLocks()
{
    ScratchFolder scratch;
    const QString log = scratch.file("locked.log", "secret\n");
    const HeldFile held(log, HeldFile::Others::MayNothing);
    QVERIFY(!readLogFile(log, 10, [](std::string_view, int) { QFAIL("a line"); }));
}

void LockedFiles::showsALogThatItsWriterShares()
{
    ScratchFolder scratch;
    const QString log = scratch.file("busy.log", "still being written\n");
    const HeldFile held(log, HeldFile::Others::MayEverything);
    QByteArray shown;
    const auto count = readLogFile(log, 10, [&shown](std::string_view line, int) {
        shown = QByteArray(line.data(), int(line.size()));
    });
    QCOMPARE(count.value_or(-1), 1);
    QCOMPARE(shown, QByteArray("still being written"));
}

void LockedFiles::setsTheLevelWhenTheFileIsReleased_data()
{
    QTest::addColumn<int>("others");
    QTest::addColumn<int>("outcome");
    QTest::newRow("held against reading")
        << int(HeldFile::Others::MayNothing) << int(LogLevelRewrite::Outcome::Unreadable);
    QTest::newRow("held against writing")
        << int(HeldFile::Others::MayRead) << int(LogLevelRewrite::Outcome::Failed);
}

void LockedFiles::setsTheLevelWhenTheFileIsReleased()
{
    QFETCH(int, others);
    ScratchFolder scratch;
    const DebugCapture output;
    const QString name = "a.properties";
    LogLevelRewrite rewrite(scratch.file(name, infoFile));
    {
        const HeldFile held(scratch.path(name), HeldFile::Others(others));
        QTEST(int(rewrite.apply(2)), "outcome");
    }
    QCOMPARE(scratch.read(name), infoFile);
    QCOMPARE(rewrite.apply(2), LogLevelRewrite::Outcome::Done);
    QCOMPARE(scratch.read(name), QByteArray("log4cpp.rootCategory = FATAL\r\n"
                                            "log4cpp.category.qzsdk = FATAL, a_qzsdk\r\n"));
}

QTEST_GUILESS_MAIN(LockedFiles)
#include "tst_locked_files.moc"

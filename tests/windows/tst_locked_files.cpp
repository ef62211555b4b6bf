#include "ExportFixture.h"
#include "HeldFile.h"

/// Logs that another program has open. One that it keeps to itself must not spoil an export.
class LockedFiles : public QObject
{
    Q_OBJECT

private slots:
    void leavesOutALogThatItsWriterKeepsToItself();
    void takesALogThatItsWriterShares_data();
    void takesALogThatItsWriterShares();
    void overwritesNoZipThatIsOpenElsewhereAndGoesOn();
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

void LockedFiles::leavesOutALogThatItsWriterKeepsToItself()
{
    ExportFixture f;
    const QString locked = f.log(text("locked.log"), "secret\n");
    const QString free = f.log(text("free.log"), "free\n");
    const HeldFile held(locked, HeldFile::Others::MayNothing);
    f.choose({locked, free});
    f.worker.enqueueExport(f.zip());
    QVERIFY(f.answers());
    const ExportFixture::Contents contents = zipContents(f.zip());
    QVERIFY(contents.contains(text("SDKLOG/free.log")));
    QVERIFY(!contents.value(text("SDKLOG/locked.log")).contains("secret"));
    bool named = false;
    for (const QString &line : f.output.lines())
        named = named || line.contains(text("locked.log"));
    QVERIFY2(named, "what is missing is named on the debug output");
}

void LockedFiles::takesALogThatItsWriterShares_data()
{
    QTest::addColumn<int>("others");
    QTest::newRow("for reading") << int(HeldFile::Others::MayRead);
    QTest::newRow("for everything") << int(HeldFile::Others::MayEverything);
}

void LockedFiles::takesALogThatItsWriterShares()
{
    QFETCH(int, others);
    ExportFixture f;
    const QString log = f.log(text("busy.log"), "still being written\n");
    const HeldFile held(log, HeldFile::Others(others));
    f.choose({log});
    f.worker.enqueueExport(f.zip());
    QVERIFY(f.answers());
    QCOMPARE(zipContents(f.zip()).value(text("SDKLOG/busy.log")),
             QByteArray("still being written\n"));
}

void LockedFiles::overwritesNoZipThatIsOpenElsewhereAndGoesOn()
{
    ExportFixture f;
    const QString log = f.log(text("a.log"), "line\n");
    const QString open = f.scratch.file(text("open.zip"), "somebody looks at it");
    const HeldFile held(open, HeldFile::Others::MayRead);
    f.choose({log});
    f.worker.enqueueExport(open);
    QVERIFY(f.answers());
    QCOMPARE(f.scratch.read(text("open.zip")), QByteArray("somebody looks at it"));

    f.choose({log});
    f.worker.enqueueExport(f.zip());
    QVERIFY(f.answers());
    QCOMPARE(zipContents(f.zip()).value(text("SDKLOG/a.log")), QByteArray("line\n"));
}

QTEST_GUILESS_MAIN(LockedFiles)
#include "tst_locked_files.moc"

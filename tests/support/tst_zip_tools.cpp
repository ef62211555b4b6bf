#include "ScratchFolder.h"
#include "ZipTools.h"

#include <QTest>

#include <private/qzipwriter_p.h>

/// Tests the zip checks: they accept a good zip and reject a bad one.
class ZipToolsTest : public QObject
{
    Q_OBJECT

private slots:
    void agreeOnAGoodZip();
    void agreeOnAZipWithoutEntries();
    void complainOfAByteThatChanged_data();
    void complainOfAByteThatChanged();
    void complainOfHalfAZip();
    void complainOfWhatIsNoZip();
    void lookAtAllThatWereKept();
    void holdAZipAgainstItsOriginals();
};

namespace {

QString goodZip(ScratchFolder &scratch)
{
    const QString path = scratch.path("good zip.zip");
    QZipWriter writer(path);
    writer.addFile("SDKLOG/日志 1.log", QByteArray(10000, 'x'));
    writer.addFile("empty", QByteArray());
    writer.addFile("100% sure.txt", QByteArray("line\r\n\0\xff", 8));
    writer.addFile("/outside/dump.dmp", "dump");
    return path;
}

} // namespace

void ZipToolsTest::agreeOnAGoodZip()
{
    ScratchFolder scratch;
    QCOMPARE(verifiedZipContents(goodZip(scratch)),
             (QMap<QString, QByteArray>{{"SDKLOG/日志 1.log", QByteArray(10000, 'x')},
                                        {"empty", QByteArray()},
                                        {"100% sure.txt", QByteArray("line\r\n\0\xff", 8)},
                                        {"outside/dump.dmp", "dump"}}));
}

void ZipToolsTest::agreeOnAZipWithoutEntries()
{
    ScratchFolder scratch;
    const QString path = scratch.path("a.zip");
    QZipWriter(path).close();
    QCOMPARE(zipToolsComplaint({path}), QString());
}

void ZipToolsTest::complainOfAByteThatChanged_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    // One is in the directory at the end, the other in the header before the contents.
    QTest::newRow("contents") << QByteArray("dump") << QByteArray("Dump");
    QTest::newRow("name") << QByteArray("empty") << QByteArray("Empty");
}

void ZipToolsTest::complainOfAByteThatChanged()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    ScratchFolder scratch;
    const QString path = scratch.path("a.zip");
    {
        QZipWriter writer(path);
        writer.setCompressionPolicy(QZipWriter::NeverCompress);
        writer.addFile("empty", QByteArray());
        writer.addFile("last", "dump");
    }
    QCOMPARE(zipToolsComplaint({path}), QString());
    QByteArray bytes = scratch.read("a.zip");
    const int place = bytes.indexOf(before);
    QVERIFY(place > 0);
    scratch.file("a.zip", bytes.replace(place, before.size(), after));
    QVERIFY(!zipToolsComplaint({path}).isEmpty());
}

void ZipToolsTest::complainOfHalfAZip()
{
    ScratchFolder scratch;
    goodZip(scratch);
    const QByteArray bytes = scratch.read("good zip.zip");
    for (const int size : {bytes.size() - 1, bytes.size() / 2, 10, 0})
        QVERIFY(!zipToolsComplaint({scratch.file("half.zip", bytes.left(size))}).isEmpty());
}

void ZipToolsTest::complainOfWhatIsNoZip()
{
    ScratchFolder scratch;
    QVERIFY(!zipToolsComplaint({scratch.file("a.zip", "text")}).isEmpty());
    QVERIFY(!zipToolsComplaint({scratch.path("missing.zip")}).isEmpty());
}

void ZipToolsTest::lookAtAllThatWereKept()
{
    ScratchFolder scratch;
    const QString path = goodZip(scratch);
    const QString empty = scratch.path("empty.zip");
    QZipWriter(empty).close();
    KeptZips kept;
    kept.keep(scratch.path("missing.zip"));
    QCOMPARE(kept.count(), 0);
    for (const QString &zip : {path, empty, path})
        kept.keep(zip);
    QCOMPARE(kept.count(), 3);
    QCOMPARE(kept.complaint(), QString());
    QFile file(path);
    QVERIFY(file.resize(file.size() - 1));
    kept.keep(path);
    kept.keep(empty);
    QVERIFY(!kept.complaint().isEmpty());
}

void ZipToolsTest::holdAZipAgainstItsOriginals()
{
    ScratchFolder scratch;
    const QString zip = goodZip(scratch);
    const QVector<PackedFile> originals{
        {"SDKLOG/日志 1.log", scratch.file("日志", QByteArray(10000, 'x'))},
        {"empty", scratch.file("empty")},
        {"100% sure.txt", scratch.file("sure", QByteArray("line\r\n\0\xff", 8))},
        {"/outside/dump.dmp", scratch.file("dump", "dump")}};
    QCOMPARE(zipToolsComplaint(zip, originals), QString());

    QVERIFY(!zipToolsComplaint(zip, originals.mid(1)).isEmpty());
    QVERIFY(!zipToolsComplaint(zip, originals + originals.mid(1, 1)).isEmpty());
    QVector<PackedFile> others = originals;
    others[1].name = "Empty";
    QVERIFY(!zipToolsComplaint(zip, others).isEmpty());
    scratch.file("dump", "Dump");
    QVERIFY(!zipToolsComplaint(zip, originals).isEmpty());
    scratch.file("dump", "dump");
    QVERIFY(QFile::resize(zip, QFileInfo(zip).size() - 1));
    QVERIFY(!zipToolsComplaint(zip, originals).isEmpty());
}

QTEST_GUILESS_MAIN(ZipToolsTest)
#include "tst_zip_tools.moc"

#include "DebugCapture.h"
#include "Diagnostics.h"
#include "FailingClose.h"
#include "Faults.h"
#include "Noise.h"
#include "ScratchFolder.h"
#include "ZipContents.h"
#include "ZipWriters.h"

#include <QProcess>

#include <cerrno>
#include <new>

/// Faults of files and disks while packing. The archive is complete, or there is none.
class ZipFaults : public QObject
{
    Q_OBJECT

private slots:
    void treatsAVanishedFileAsEmptyAndLogsIt_data() { bothWriters(); }
    void treatsAVanishedFileAsEmptyAndLogsIt();
    void takesWhatThereIsOfAFileThatShrank_data() { bothWriters(); }
    void takesWhatThereIsOfAFileThatShrank();
    void packsAGrowingFileAsLargeAsItWasWhenItWasAdded_data() { bothWriters(); }
    void packsAGrowingFileAsLargeAsItWasWhenItWasAdded();
    void logsThatItCannotBeWritten_data() { bothWriters(); }
    void logsThatItCannotBeWritten();
    void refusesWhatIsNoRegularFile_data() { bothWriters(); }
    void refusesWhatIsNoRegularFile();
    void leavesNoHalfZipOnAFullDisk_data();
    void leavesNoHalfZipOnAFullDisk();
    void leavesNoHalfZipWhenMemoryRunsOutInALargeOne();
    void leavesOutASecondEntryOfANameInALargeOne();
    void isRemovedWhenItsEndFails_data() { bothWriters(); }
    void isRemovedWhenItsEndFails();

private:
    const Diagnostics diagnostics;
};

namespace {

using Contents = QMap<QString, QByteArray>;

} // namespace

void ZipFaults::treatsAVanishedFileAsEmptyAndLogsIt()
{
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    const QString gone = scratch.file("gone", "soon");
    const DebugCapture output;
    ZipArchive archive(zip, {}, limits);
    archive.addFile("gone", gone);
    archive.addFile("there", scratch.file("there", "there"));
    QVERIFY(QFile::remove(gone));
    QVERIFY(archive.close());
    QCOMPARE(zipContents(zip), (Contents{{"gone", {}}, {"there", "there"}}));
    QCOMPARE(output.lines().size(), 1);
    QVERIFY(output.lines().constFirst().startsWith(QString("cannot read \"%1\"").arg(gone)));
}

void ZipFaults::takesWhatThereIsOfAFileThatShrank()
{
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    const QString path = scratch.file("x", noise(50'000));
    const DebugCapture output;
    ZipArchive archive(zip, {}, limits);
    archive.addFile("x", path);
    scratch.file("x", noise(20'000));
    QVERIFY(archive.close());
    QCOMPARE(zipContents(zip), (Contents{{"x", noise(20'000)}}));
    QCOMPARE(output.lines(),
             QStringList(QString("read only 20000 of 50000 bytes: \"%1\"").arg(path)));
}

void ZipFaults::packsAGrowingFileAsLargeAsItWasWhenItWasAdded()
{
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    const QString growing = scratch.file("growing", "before");
    const DebugCapture output;
    ZipArchive archive(zip, {}, limits);
    archive.addFile("growing", growing);
    scratch.file("growing", "before and after");
    QVERIFY(archive.close());
    QCOMPARE(zipContents(zip), (Contents{{"growing", "before"}}));
    QCOMPARE(output.lines(), QStringList());
}

void ZipFaults::logsThatItCannotBeWritten()
{
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    const QString zip = scratch.path("no such folder/a.zip");
    const DebugCapture output;
    int packed = 0;
    ZipArchive archive(zip, {}, limits);
    archive.addFile("x", scratch.file("x", "x"), [&] { ++packed; });
    QVERIFY(!archive.close());
    QVERIFY(!QFileInfo::exists(zip));
    QCOMPARE(packed, 1);
    QCOMPARE(output.lines().size(), 1);
    QVERIFY(output.lines().constFirst().startsWith(QString("cannot write zip \"%1\"").arg(zip)));
}

void ZipFaults::refusesWhatIsNoRegularFile()
{
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    if (QProcess::execute("mkfifo", {zip}) != 0)
        QSKIP("there are no pipes in folders on this system");
    QFile reader(zip);
    QVERIFY(reader.open(QIODevice::ReadWrite)); // so that a writer would not block
    const DebugCapture output;
    ZipArchive archive(zip, {}, limits);
    archive.addFile("x", scratch.file("x", "x"));
    QVERIFY(!archive.close());
    QVERIFY(QFileInfo::exists(zip));
    QCOMPARE(output.lines(),
             QStringList(QString("cannot write zip \"%1\" \"not a regular file\"").arg(zip)));
}

void ZipFaults::leavesNoHalfZipOnAFullDisk_data()
{
    QTest::addColumn<ZipLimits>("limits");
    QTest::addColumn<int>("room");
    // In the first header, in the first contents, between two files; and, counted from the end, in
    // the directory and in the last record.
    for (const int room : {0, 10, 5000, 20'050, -100, -30, -1}) {
        QTest::addRow("Qt's writer, %d bytes", room) << ZipLimits() << room;
        QTest::addRow("large, %d bytes", room) << nothingFits() << room;
    }
}

void ZipFaults::leavesNoHalfZipOnAFullDisk()
{
    if (!FileSizeLimit::available())
        QSKIP("this system cannot limit the size of files");
    QFETCH(ZipLimits, limits);
    QFETCH(int, room);
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    const QString first = scratch.file("1", noise(20'000));
    const QString second = scratch.file("2", noise(20'000));
    int packed = 0;
    const auto pack = [&] {
        packed = 0;
        ZipArchive archive(zip, {}, limits);
        archive.addFile("first", first, [&] { ++packed; });
        archive.addFile("second", second, [&] { ++packed; });
        return archive.close();
    };
    QVERIFY(pack());
    const DebugCapture output;
    {
        const FileSizeLimit limit(long(room < 0 ? QFileInfo(zip).size() + room : room));
        QVERIFY(!pack());
    }
    QCOMPARE(packed, 2);
    QCOMPARE(QDir(scratch.path()).entryList(QDir::Files), QStringList({"1", "2"}));
    QCOMPARE(
        output.lines(),
        QStringList(QString("zip not written: \"%1\" \"%2\"").arg(zip, qt_error_string(EFBIG))));
}

void ZipFaults::leavesNoHalfZipWhenMemoryRunsOutInALargeOne()
{
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    const DebugCapture output;
    ZipArchive archive(zip, {{}, [](qint64) { throw std::bad_alloc(); }}, nothingFits());
    archive.addFile("x", scratch.file("x", "x"));
    QVERIFY(!archive.close());
    QVERIFY(!QFileInfo::exists(zip));
    QCOMPARE(output.lines().size(), 1);
    QVERIFY(output.lines().constFirst().startsWith(QString("zip not written: \"%1\"").arg(zip)));
}

void ZipFaults::leavesOutASecondEntryOfANameInALargeOne()
{
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    const DebugCapture output;
    ZipArchive archive(zip, {}, nothingFits());
    archive.addFile("x", scratch.file("1", "first"));
    archive.addFile("x", scratch.file("2", "second"));
    QVERIFY(archive.close());
    QCOMPARE(zipContents(zip), (Contents{{"x", "first"}}));
    QCOMPARE(output.lines().size(), 1);
    QVERIFY(output.lines().constFirst().startsWith(
        QString("left out of the zip: \"%1\"").arg(scratch.path("2"))));
}

void ZipFaults::isRemovedWhenItsEndFails()
{
    if (!FailingClose::available())
        QSKIP("this system has no means to let the close of a file fail");
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    const QString file = scratch.file("x", noise(50'000));
    const DebugCapture output;
    {
        const FailingClose disk;
        ZipArchive archive(zip, {}, limits);
        archive.addFile("x", file);
        QVERIFY(!archive.close());
    }
    QVERIFY(!QFileInfo::exists(zip));
    QCOMPARE(
        output.lines(),
        QStringList(QString("zip not written: \"%1\" \"%2\"").arg(zip, qt_error_string(ENOSPC))));
}

QTEST_GUILESS_MAIN(ZipFaults)
#include "tst_zip_faults.moc"

#include "DebugCapture.h"
#include "Diagnostics.h"
#include "Faults.h"
#include "Machine.h"
#include "Noise.h"
#include "ScratchFolder.h"
#include "ZipArchive.h"
#include "ZipContents.h"
#include "ZipTools.h"

#include <QtTest>

#include <cerrno>

class ZipArchiveTest : public QObject
{
    Q_OBJECT

private slots:
    void holdsWhatWasAdded();
    void isAValidZipWithoutEntries();
    void replacesAFileThatIsThere();
    void keepsNamesInUtf8();
    void holdsTheSameForOtherTools();
    void leavesAFileOfTwoGibibytesEmptyAndSaysSo();
    void leavesALargerFileThanItsLimitEmptyAndSaysSo();
    void leavesOutWhatIsBeyondTheNumberOfEntries();
    void leavesOutWhatWouldMakeItTooLarge();
    void leavesAVanishedFileEmptyAndSaysSo();
    void takesWhatThereIsOfAFileThatIsShorterThanItSays();
    void saysThatItCannotBeWritten();
    void leavesNoHalfZipOnAFullDisk_data();
    void leavesNoHalfZipOnAFullDisk();
    void packsAGrowingFileAsLargeAsItWasWhenItWasAdded();
    void saysHowManyBytesItPacks();
    void callsBackOnceAFileIsPacked();
    void closesOnlyOnce();

private:
    const Diagnostics diagnostics;
};

void ZipArchiveTest::holdsWhatWasAdded()
{
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    ZipArchive archive(zip);
    archive.addFile(QStringLiteral("b/first"), scratch.file(QStringLiteral("1"), "one"));
    archive.addFile(QStringLiteral("a/second"), scratch.file(QStringLiteral("2"), noise(70000)));
    archive.addFile(QStringLiteral("empty"), scratch.file(QStringLiteral("3")));
    QVERIFY(archive.close());

    QCOMPARE(zipEntryNames(zip), QStringList({QStringLiteral("b/first"), QStringLiteral("a/second"),
                                              QStringLiteral("empty")}));
    const auto contents = zipContents(zip);
    QCOMPARE(contents.value(QStringLiteral("b/first")), QByteArray("one"));
    QCOMPARE(contents.value(QStringLiteral("a/second")), noise(70000));
    QCOMPARE(contents.value(QStringLiteral("empty")), QByteArray());
}

void ZipArchiveTest::isAValidZipWithoutEntries()
{
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    QVERIFY(ZipArchive(zip).close());
    // Nothing but the end record of an empty directory.
    QCOMPARE(scratch.read(QStringLiteral("a.zip")), QByteArray("PK\5\6") + QByteArray(18, '\0'));
}

void ZipArchiveTest::replacesAFileThatIsThere()
{
    ScratchFolder scratch;
    const QString zip = scratch.file(QStringLiteral("a.zip"), noise(100000));
    {
        ZipArchive archive(zip);
        archive.addFile(QStringLiteral("x"), scratch.file(QStringLiteral("x"), "new"));
    }
    QCOMPARE(zipContents(zip), (QMap<QString, QByteArray>{{QStringLiteral("x"), "new"}}));
    QVERIFY(QFileInfo(zip).size() < 1000);
}

void ZipArchiveTest::keepsNamesInUtf8()
{
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    const QString name = QString::fromUtf8("日志/100% \"größe\" 📷.log");
    ZipArchive archive(zip);
    archive.addFile(name, scratch.file(QStringLiteral("x"), "x"));
    QVERIFY(archive.close());
    QCOMPARE(zipEntryNames(zip), QStringList(name));
    QVERIFY(scratch.read(QStringLiteral("a.zip")).contains(name.toUtf8()));
}

void ZipArchiveTest::holdsTheSameForOtherTools()
{
    if (onWindows())
        QSKIP("there are no such tools here");
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    ZipArchive archive(zip);
    archive.addFile(QStringLiteral("SDKLOG/a.log"), scratch.file(QStringLiteral("1"), noise(5000)));
    archive.addFile(QString::fromUtf8("SDKLOG/日志.log"),
                    scratch.file(QStringLiteral("2"), "text"));
    archive.addFile(QStringLiteral("empty.txt"), scratch.file(QStringLiteral("3")));
    QVERIFY(archive.close());
    QCOMPARE(zipToolsComplaint({zip}), QString());
}

void ZipArchiveTest::leavesAFileOfTwoGibibytesEmptyAndSaysSo()
{
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    const QString huge = scratch.sparseFile(QStringLiteral("huge.dmp"), qint64(1) << 31);
    DebugCapture output;
    ZipArchive archive(zip);
    archive.addFile(QStringLiteral("huge.dmp"), huge);
    archive.addFile(QStringLiteral("x"), scratch.file(QStringLiteral("x"), "still here"));
    QVERIFY(archive.close());

    QCOMPARE(zipContents(zip).value(QStringLiteral("huge.dmp")), QByteArray());
    QCOMPARE(zipContents(zip).value(QStringLiteral("x")), QByteArray("still here"));
    QCOMPARE(
        output.lines(),
        QStringList(QStringLiteral("too large for the zip, left empty: \"%1\" 2147483648 bytes")
                        .arg(huge)));
}

void ZipArchiveTest::leavesALargerFileThanItsLimitEmptyAndSaysSo()
{
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    const QString larger = scratch.file(QStringLiteral("2"), noise(1001));
    DebugCapture output;
    ZipLimits limits;
    limits.entryBytes = 1000;
    ZipArchive archive(zip, {}, limits);
    archive.addFile(QStringLiteral("fits"), scratch.file(QStringLiteral("1"), noise(1000)));
    archive.addFile(QStringLiteral("larger"), larger);
    QVERIFY(archive.close());
    QCOMPARE(zipContents(zip),
             (QMap<QString, QByteArray>{{QStringLiteral("fits"), noise(1000)},
                                        {QStringLiteral("larger"), QByteArray()}}));
    QCOMPARE(
        output.lines(),
        QStringList(
            QStringLiteral("too large for the zip, left empty: \"%1\" 1001 bytes").arg(larger)));
}

void ZipArchiveTest::leavesOutWhatIsBeyondTheNumberOfEntries()
{
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    const QString file = scratch.file(QStringLiteral("1"), "one");
    DebugCapture output;
    ZipLimits limits;
    limits.entries = 3;
    ZipArchive archive(zip, {}, limits);
    for (const char *name : {"a", "b", "c", "d", "e"})
        archive.addFile(QLatin1String(name), file);
    QVERIFY(archive.close());
    QCOMPARE(zipEntryNames(zip),
             QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
    QCOMPARE(output.lines(),
             QStringList({QStringLiteral("no room in the zip, left out: \"d\" 3 bytes"),
                          QStringLiteral("no room in the zip, left out: \"e\" 3 bytes")}));
}

void ZipArchiveTest::leavesOutWhatWouldMakeItTooLarge()
{
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    DebugCapture output;
    ZipLimits limits;
    limits.archiveBytes = 100'000;
    ZipArchive archive(zip, {}, limits);
    archive.addFile(QStringLiteral("half"), scratch.file(QStringLiteral("1"), noise(50'000)));
    archive.addFile(QStringLiteral("as much"), scratch.file(QStringLiteral("2"), noise(50'000)));
    archive.addFile(QStringLiteral("little"), scratch.file(QStringLiteral("3"), noise(1000)));
    QVERIFY(archive.close());
    // What follows is not lost with it.
    QCOMPARE(zipContents(zip),
             (QMap<QString, QByteArray>{{QStringLiteral("half"), noise(50'000)},
                                        {QStringLiteral("little"), noise(1000)}}));
    QVERIFY(QFileInfo(zip).size() < limits.archiveBytes);
    QCOMPARE(output.lines(),
             QStringList(QStringLiteral("no room in the zip, left out: \"as much\" 50000 bytes")));
}

void ZipArchiveTest::leavesAVanishedFileEmptyAndSaysSo()
{
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    DebugCapture output;
    ZipArchive archive(zip);
    archive.addFile(QStringLiteral("gone"), scratch.path(QStringLiteral("gone")));
    QVERIFY(archive.close());
    QCOMPARE(zipContents(zip), (QMap<QString, QByteArray>{{QStringLiteral("gone"), {}}}));
    QCOMPARE(output.lines().size(), 1);
    QVERIFY(output.lines().constFirst().startsWith(QStringLiteral("cannot read")));
}

void ZipArchiveTest::takesWhatThereIsOfAFileThatIsShorterThanItSays()
{
    // As a file is that somebody cuts short meanwhile.
    const QString path = QStringLiteral("/sys/kernel/mm/transparent_hugepage/enabled");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.readAll().size() >= file.size())
        QSKIP("there is no such file here");
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    const DebugCapture output;
    ZipArchive archive(zip);
    archive.addFile(QStringLiteral("x"), path);
    QVERIFY(archive.close());
    file.seek(0);
    QCOMPARE(zipContents(zip).value(QStringLiteral("x")), file.readAll());
    QVERIFY(output.lines().join(QString()).startsWith(QStringLiteral("read only ")));
}

void ZipArchiveTest::saysThatItCannotBeWritten()
{
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("no such folder/a.zip"));
    DebugCapture output;
    ZipArchive archive(zip);
    archive.addFile(QStringLiteral("x"), scratch.file(QStringLiteral("x"), "x"));
    QVERIFY(!archive.close());
    QVERIFY(!QFileInfo::exists(zip));
    QCOMPARE(output.lines().size(), 1);
    QVERIFY(
        output.lines().constFirst().startsWith(QStringLiteral("cannot write zip \"%1\"").arg(zip)));
}

void ZipArchiveTest::leavesNoHalfZipOnAFullDisk_data()
{
    QTest::addColumn<int>("room");
    // In the first header, within the first contents, between two files, in the directory, and in
    // the very last record.
    for (const int room : {0, 10, 5000, 20050, 40100, 40180, 40210})
        QTest::addRow("%d bytes", room) << room;
}

void ZipArchiveTest::leavesNoHalfZipOnAFullDisk()
{
    if (!FileSizeLimit::available())
        QSKIP("this system cannot limit the size of files");
    QFETCH(int, room);
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    const QString first = scratch.file(QStringLiteral("1"), noise(20000));
    const QString second = scratch.file(QStringLiteral("2"), noise(20000));
    DebugCapture output;
    {
        const FileSizeLimit limit(room);
        ZipArchive archive(zip);
        archive.addFile(QStringLiteral("first"), first);
        archive.addFile(QStringLiteral("second"), second);
        QVERIFY(!archive.close());
    }
    QVERIFY(!QFileInfo::exists(zip));
    QCOMPARE(
        output.lines(),
        QStringList{
            QStringLiteral("zip not written: \"%1\" \"%2\"").arg(zip, qt_error_string(EFBIG))});
}

void ZipArchiveTest::packsAGrowingFileAsLargeAsItWasWhenItWasAdded()
{
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    const QString growing = scratch.file(QStringLiteral("growing"), "before");
    const DebugCapture output;
    ZipArchive archive(zip);
    archive.addFile(QStringLiteral("growing"), growing);
    scratch.file(QStringLiteral("growing"), "before and after");
    QVERIFY(archive.close());
    QCOMPARE(zipContents(zip), (QMap<QString, QByteArray>{{QStringLiteral("growing"), "before"}}));
    QCOMPARE(output.lines(), QStringList());
}

void ZipArchiveTest::saysHowManyBytesItPacks()
{
    ScratchFolder scratch;
    qint64 packed = 0;
    ZipArchive archive(scratch.path(QStringLiteral("a.zip")),
                       [&](qint64 bytes) { packed += bytes; });
    archive.addFile(QStringLiteral("a"), scratch.file(QStringLiteral("1"), noise(70000)));
    archive.addFile(QStringLiteral("b"), scratch.file(QStringLiteral("2"), noise(1000)));
    archive.addFile(QStringLiteral("empty"), scratch.file(QStringLiteral("3")));
    QCOMPARE(packed, qint64(0));
    archive.write();
    QCOMPARE(packed, qint64(71000));
    QVERIFY(archive.close());
    QCOMPARE(packed, qint64(71000));
}

void ZipArchiveTest::callsBackOnceAFileIsPacked()
{
    ScratchFolder scratch;
    const QString zip = scratch.path(QStringLiteral("a.zip"));
    QVector<qint64> sizes;
    ZipArchive archive(zip);
    for (const char *name : {"a", "b"})
        archive.addFile(QLatin1String(name), scratch.file(QLatin1String(name), noise(5000)),
                        [&] { sizes.append(QFileInfo(zip).size()); });
    archive.write();
    QCOMPARE(sizes.size(), 2);
    QVERIFY(sizes.at(0) > 5000 && sizes.at(0) < 10000 && sizes.at(1) > 10000);
    QVERIFY(archive.close());
    QCOMPARE(sizes.size(), 2);
}

void ZipArchiveTest::closesOnlyOnce()
{
    ScratchFolder scratch;
    ZipArchive archive(scratch.path(QStringLiteral("a.zip")));
    QVERIFY(archive.close());
    QVERIFY(!archive.close());
}

QTEST_GUILESS_MAIN(ZipArchiveTest)
#include "tst_zip_archive.moc"

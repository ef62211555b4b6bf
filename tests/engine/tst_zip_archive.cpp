#include "DebugCapture.h"
#include "Diagnostics.h"
#include "Faults.h"
#include "Machine.h"
#include "Noise.h"
#include "ScratchFolder.h"
#include "ZipArchive.h"
#include "ZipContents.h"
#include "ZipTools.h"
#include "ZipWriters.h"

#include <QTest>

#include <private/qzipreader_p.h>
#include <private/qzipwriter_p.h>

class ZipArchiveTest : public QObject
{
    Q_OBJECT

private slots:
    void holdsWhatWasAdded_data() { bothWriters(); }
    void holdsWhatWasAdded();
    void holdsTheSameForOtherTools();
    void isWhatTheBareWriterMakes();
    void isAValidZipWithoutEntries();
    void replacesAFileThatIsThere_data() { bothWriters(); }
    void replacesAFileThatIsThere();
    void keepsNamesInUtf8_data() { bothWriters(); }
    void keepsNamesInUtf8();
    void isLargeBeyondAnyOfTheLimits_data();
    void isLargeBeyondAnyOfTheLimits();
    void reportsHowManyBytesItPacks_data() { bothWriters(); }
    void reportsHowManyBytesItPacks();
    void callsBackOnceAFileIsPacked_data() { bothWriters(); }
    void callsBackOnceAFileIsPacked();
    void isPrivateFromTheFirstByte_data() { bothWriters(); }
    void isPrivateFromTheFirstByte();
    void closesOnlyOnce_data() { bothWriters(); }
    void closesOnlyOnce();

private:
    const Diagnostics diagnostics;
};

namespace {

using Contents = QMap<QString, QByteArray>;

/// Whether the first entry needs Zip64.
bool isLarge(const ScratchFolder &scratch)
{
    constexpr char zip64 = 45;
    return scratch.read("a.zip").at(4) == zip64;
}

} // namespace

void ZipArchiveTest::holdsWhatWasAdded()
{
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    const DebugCapture output;
    ZipArchive archive(zip, {}, limits);
    archive.addFile("b/first", scratch.file("1", "one"));
    archive.addFile("a/second", scratch.file("2", noise(70'000)));
    archive.addFile("a/text", scratch.file("3", QByteArray(300'000, 'x')));
    archive.addFile("empty", scratch.file("4"));
    QVERIFY(archive.close());

    QCOMPARE(zipEntryNames(zip), QStringList({"b/first", "a/second", "a/text", "empty"}));
    QCOMPARE(zipContents(zip), (Contents{{"b/first", "one"},
                                         {"a/second", noise(70'000)},
                                         {"a/text", QByteArray(300'000, 'x')},
                                         {"empty", QByteArray()}}));
    QVERIFY(QFileInfo(zip).size() < 80'000);
    QCOMPARE(output.lines(), QStringList());
}

void ZipArchiveTest::holdsTheSameForOtherTools()
{
    if (onWindows())
        QSKIP("there are no such tools here");
    ScratchFolder scratch;
    QStringList zips;
    for (const ZipLimits &limits : {ZipLimits(), nothingFits()}) {
        zips.append(scratch.path(QString("%1.zip").arg(zips.size())));
        ZipArchive archive(zips.last(), {}, limits);
        archive.addFile("SDKLOG/a.log", scratch.file("1", noise(5000)));
        archive.addFile("SDKLOG/日志.log", scratch.file("2", "text"));
        archive.addFile("empty.txt", scratch.file("3"));
        archive.addFile("gone.txt", scratch.path("gone"));
    }
    QCOMPARE(zipToolsComplaint(zips), QString());
}

void ZipArchiveTest::isWhatTheBareWriterMakes()
{
    ScratchFolder scratch;
    const auto pack = [&] {
        ZipArchive archive(scratch.path("a.zip"));
        for (const char *name : {"1", "2", "3"})
            archive.addFile(name, scratch.path(name));
    };
    const auto packBare = [&] {
        QZipWriter bare(scratch.path("bare.zip"));
        for (const char *name : {"1", "2", "3"})
            bare.addFile(name, scratch.read(name));
    };
    scratch.file("1", "one");
    scratch.file("2", noise(70'000));
    scratch.file("3");
    // Entries contain the time of day, so both must be written at the same moment.
    bool equal = false;
    for (int attempt = 0; attempt < 5 && !equal; ++attempt) {
        pack();
        packBare();
        equal = scratch.read("a.zip") == scratch.read("bare.zip");
    }
    QVERIFY(equal);
}

void ZipArchiveTest::isAValidZipWithoutEntries()
{
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    QVERIFY(ZipArchive(zip).close());
    // Only the end record of an empty directory.
    QCOMPARE(scratch.read("a.zip"), QByteArray("PK\5\6") + QByteArray(18, '\0'));
}

void ZipArchiveTest::replacesAFileThatIsThere()
{
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    const QString zip = scratch.file("a.zip", noise(100'000));
    {
        ZipArchive archive(zip, {}, limits);
        archive.addFile("x", scratch.file("x", "new"));
    }
    QCOMPARE(zipContents(zip), (Contents{{"x", "new"}}));
    QVERIFY(QFileInfo(zip).size() < 1000);
}

void ZipArchiveTest::keepsNamesInUtf8()
{
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    const QString name = "日志/100% \"größe\" 📷.log";
    ZipArchive archive(zip, {}, limits);
    archive.addFile(name, scratch.file("x", "x"));
    QVERIFY(archive.close());
    QCOMPARE(zipContents(zip), (Contents{{name, "x"}}));
    QVERIFY(scratch.read("a.zip").contains(name.toUtf8()));
}

void ZipArchiveTest::isLargeBeyondAnyOfTheLimits_data()
{
    QTest::addColumn<ZipLimits>("limits");
    QTest::addColumn<bool>("large");
    // Limits for three files of up to 1000 bytes.
    ZipLimits limits;
    limits.entryBytes = 1000;
    limits.entries = 3;
    limits.archiveBytes = 3 * 2500;
    QTest::newRow("within all") << limits << false;
    limits.entryBytes = 999;
    QTest::newRow("a file") << limits << true;
    limits.entryBytes = 1000;
    limits.entries = 2;
    QTest::newRow("the number of entries") << limits << true;
    limits.entries = 3;
    limits.archiveBytes = 3 * 1500;
    QTest::newRow("the whole") << limits << true;
}

void ZipArchiveTest::isLargeBeyondAnyOfTheLimits()
{
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    ZipArchive archive(scratch.path("a.zip"), {}, limits);
    archive.addFile("1", scratch.file("1", noise(900)));
    archive.addFile("2", scratch.file("2", noise(1000)));
    archive.addFile("3", scratch.file("3", noise(900)));
    QVERIFY(archive.close());
    QTEST(isLarge(scratch), "large");
}

void ZipArchiveTest::reportsHowManyBytesItPacks()
{
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    QVector<qint64> expected;
    qint64 packed = 0;
    ZipArchive archive(
        scratch.path("a.zip"),
        {[&](qint64 bytes) { expected.append(bytes); }, [&](qint64 bytes) { packed += bytes; }},
        limits);
    archive.addFile("a", scratch.file("1", noise(70'000)));
    archive.addFile("b", scratch.file("2", noise(1000)));
    archive.addFile("empty", scratch.file("3"));
    QCOMPARE(packed, qint64(0));
    archive.write();
    QCOMPARE(expected, QVector<qint64>(1, 71'000));
    QCOMPARE(packed, qint64(71'000));
    QVERIFY(archive.close());
    QCOMPARE(packed, qint64(71'000));
}

void ZipArchiveTest::callsBackOnceAFileIsPacked()
{
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    QVector<qint64> sizes;
    ZipArchive archive(zip, {}, limits);
    for (const char *name : {"a", "b"})
        archive.addFile(name, scratch.file(name, noise(5000)),
                        [&] { sizes.append(QFileInfo(zip).size()); });
    archive.write();
    QCOMPARE(sizes.size(), 2);
    QVERIFY(sizes.at(0) > 5000 && sizes.at(1) > 10'000);
    QVERIFY(archive.close());
    QCOMPARE(sizes.size(), 2);
}

void ZipArchiveTest::isPrivateFromTheFirstByte()
{
    if (onWindows())
        QSKIP("the folder decides who may read a file there");
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    const QString file = scratch.file("x", noise(50'000));
    const QString there = scratch.file("there.zip", "old");
    QVERIFY(QFile::setPermissions(there, Everybody::mayReadAndWrite));
    for (const QString &zip : {there, scratch.path("new.zip")}) {
        QFile::Permissions seen = {};
        ZipArchive archive(zip, {{}, [&](qint64) { seen |= QFile::permissions(zip); }}, limits);
        seen |= QFile::permissions(zip);
        archive.addFile("x", file);
        QVERIFY(archive.close());
        seen |= QFile::permissions(zip);
        QCOMPARE(seen & QFile::Permissions(0x7077), QFile::ReadOwner | QFile::WriteOwner);
        // Unpacked files are private too.
        QCOMPARE(QZipReader(zip).entryInfoAt(0).permissions & QFile::Permissions(0x7077),
                 QFile::ReadOwner | QFile::WriteOwner);
    }
}

void ZipArchiveTest::closesOnlyOnce()
{
    QFETCH(ZipLimits, limits);
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    ZipArchive archive(zip, {}, limits);
    archive.addFile("x", scratch.file("x", "x"));
    QVERIFY(archive.close());
    QVERIFY(!archive.close());
    QCOMPARE(zipContents(zip), (Contents{{"x", "x"}}));
}

QTEST_GUILESS_MAIN(ZipArchiveTest)
#include "tst_zip_archive.moc"

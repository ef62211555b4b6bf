#include "DebugCapture.h"
#include "Diagnostics.h"
#include "DumpArchives.h"
#include "LargeFiles.h"
#include "MemoryPeak.h"
#include "Noise.h"
#include "ZipArchive.h"
#include "ZipPacker.h"
#include "ZipTools.h"

#include <QDirIterator>

/// Archives beyond the limits of Qt's writer.
class LargeZip : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void clientDumpsOfTogetherMoreThanFourGibibytes();
    void aLogOfThreeGibibytes();
    void seventyThousandEntries();
    void aDumpThatShrinksWhileItIsPacked();
    void anArchiveOfMoreThanFourGibibytes();

private:
    const Diagnostics diagnostics;
};

namespace {

bool pack(const QVector<PackedFile> &files, const QString &zip)
{
    ZipArchive archive(zip);
    for (const PackedFile &file : files)
        archive.addFile(file.name, file.path);
    return archive.close();
}

} // namespace

void LargeZip::initTestCase()
{
    keepSparseFilesInMemory();
}

void LargeZip::clientDumpsOfTogetherMoreThanFourGibibytes()
{
    if (onWindows() && !isAskedFor())
        QSKIP(slowHere);
    ScratchFolder scratch;
    const QString source = scratch.folder("QZviewer");
    for (const char *name : {"QZviewer/a.dmp", "QZviewer/错误.dmp", "QZviewer/c.dmp"})
        scratch.sparseFile(name, 3 * gibibyte / 2, name);
    const QString zip = scratch.path("ClientDump.zip");
    const DebugCapture output;
    const MemoryPeak memory;
    writeClientDumps(zip, source);
    QVERIFY2(memory.growth() < mostMemory, qPrintable(QString::number(memory.growth())));

    QCOMPARE(output.lines(), QStringList());
    QVector<PackedFile> originals; // in folder order
    for (QDirIterator walk(source, QDir::Files); walk.hasNext();) {
        const QString path = walk.next();
        originals.append({walk.fileName(), path});
    }
    QCOMPARE(originals.size(), 3);
    QCOMPARE(zipToolsComplaint(zip, originals), QString());
}

void LargeZip::aLogOfThreeGibibytes()
{
    if (onWindows() && !isAskedFor())
        QSKIP(slowHere);
    ScratchFolder scratch;
    const QString staging = scratch.path("LogInfo");
    QVector<PackedFile> originals;
    QStringList lines;
    for (const char *name : {"NICInfo.txt", "SDKLOG/a.log", "SDKLOG/huge.log", "SDKLOG/z.log"}) {
        const qint64 size = QString(name).contains("huge") ? 3 * gibibyte : 1000;
        scratch.sparseFile(QString("LogInfo/") + name, size, name);
        originals.append({name, scratch.sparseFile(QString("originals/") + name, size, name)});
        lines.append(QString("\"%1\" \"%2\" \"%3\"")
                         .arg(name, QFileInfo(staging + '/' + name).path(), staging));
    }
    const QString zip = scratch.path("a.zip");
    const DebugCapture output;
    const MemoryPeak memory;
    QVERIFY(zipFolder(staging, zip));
    QVERIFY2(memory.growth() < mostMemory, qPrintable(QString::number(memory.growth())));

    QCOMPARE(output.lines(), lines);
    QVERIFY(!QFileInfo::exists(staging));
    QCOMPARE(zipToolsComplaint(zip, originals), QString());
}

void LargeZip::seventyThousandEntries()
{
    if (onWindows() && !isAskedFor())
        QSKIP(slowHere);
    ScratchFolder scratch;
    const QString file = scratch.file("file", "contents");
    QVector<PackedFile> originals;
    for (int i = 0; i < 70'000; ++i)
        originals.append({QString("SDKLOG/日志 %1.log").arg(i), file});
    const QString zip = scratch.path("a.zip");
    const DebugCapture output;
    const MemoryPeak memory;
    QVERIFY(pack(originals, zip));
    QVERIFY2(memory.growth() < mostMemory, qPrintable(QString::number(memory.growth())));
    QCOMPARE(output.lines(), QStringList());
    QCOMPARE(zipToolsComplaint(zip, originals), QString());
    // The Zip64 end record: without it some readers would see the count modulo 65,536.
    QVERIFY(scratch.read("a.zip").right(200).contains("PK\6\6"));
}

void LargeZip::aDumpThatShrinksWhileItIsPacked()
{
    ScratchFolder scratch;
    const QString zip = scratch.path("a.zip");
    const QString dump = scratch.sparseFile("a.dmp", 5 * gibibyte, "dump");
    const QString other = scratch.file("b.dmp", noise(100'000));
    const DebugCapture output;
    const MemoryPeak memory;
    {
        ZipArchive archive(zip, {{}, [&](qint64) { QFile::resize(dump, 1'000'000); }});
        archive.addFile("a.dmp", dump);
        archive.addFile("b.dmp", other);
        QVERIFY(archive.close());
    }
    QVERIFY2(memory.growth() < mostMemory, qPrintable(QString::number(memory.growth())));
    QCOMPARE(output.lines(),
             QStringList(QString("read only 1000000 of 5368709120 bytes: \"%1\"").arg(dump)));
    QCOMPARE(zipToolsComplaint(zip, {{"a.dmp", dump}, {"b.dmp", other}}), QString());
}

void LargeZip::anArchiveOfMoreThanFourGibibytes()
{
    if (!isAskedFor())
        QSKIP(notAskedFor);
    ScratchFolder scratch;
    const QString file = scratch.file("file", noise(720'000'000));
    const QString small = scratch.file("small", "behind all");
    QVector<PackedFile> originals;
    for (const char *name : {"a", "b", "c", "d", "e", "f"})
        originals.append({name, file});
    originals.append({"small", small});
    const QString zip = scratch.path("a.zip");
    const MemoryPeak memory;
    QVERIFY(pack(originals, zip));
    QVERIFY2(memory.growth() < mostMemory, qPrintable(QString::number(memory.growth())));
    QVERIFY(QFileInfo(zip).size() > 4 * gibibyte);
    QCOMPARE(zipToolsComplaint(zip, originals), QString());
}

QTEST_GUILESS_MAIN(LargeZip)
#include "tst_large_zip.moc"

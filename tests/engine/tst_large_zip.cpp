#include "Diagnostics.h"
#include "DumpArchives.h"
#include "FullJob.h"
#include "Machine.h"
#include "MemoryPeak.h"
#include "Noise.h"
#include "SeededRandom.h"
#include "ZipArchive.h"
#include "ZipPacker.h"
#include "ZipTools.h"

#include <QDirIterator>
#include <QProcess>

/// Archives beyond the limits of Qt's writer. Most files are sparse, which takes time but no disk
/// space.
class LargeZip : public QObject
{
    Q_OBJECT

private slots:
    void aKernelDumpOfFiveGibibytes();
    void clientDumpsOfTogetherMoreThanFourGibibytes();
    void aLogOfThreeGibibytes();
    void seventyThousandEntries();
    void aDumpThatShrinksWhileItIsPacked();
    void aLogThroughTheWholeJob();
    void clientDumpsThatMakeAnArchiveOfMoreThanTwoGibibytes();
    void anArchiveOfMoreThanFourGibibytes();

private:
    const Diagnostics diagnostics;
};

namespace {

constexpr qint64 gibibyte = 1 << 30;
constexpr qint64 mostMemory = 64 << 20; // bytes beyond those of an idle program
constexpr int patience = 600'000;       // milliseconds; gigabytes on a busy machine
constexpr const char *notAskedFor =
    "takes up to 7 GB of the disk and some minutes: runs with VANTREL_LARGE=1";
constexpr const char *slowHere = "takes minutes under Wine: runs with VANTREL_LARGE=1";

bool isAskedFor()
{
    return times("VANTREL_LARGE", 0) > 0;
}

/// A sparse file with data at its start, in its middle and at its end.
QString sparse(ScratchFolder &scratch, const QString &name, qint64 size, const QByteArray &bytes)
{
    QFile file(scratch.sparseFile(name, size));
    if (!file.open(QIODevice::ReadWrite))
        qFatal("cannot fill a file");
    for (const qint64 place : {qint64(0), size / 2, size - bytes.size()}) {
        if (!file.seek(place) || file.write(bytes) != bytes.size())
            qFatal("cannot fill a file");
    }
    return file.fileName();
}

bool pack(const QVector<PackedFile> &files, const QString &zip)
{
    ZipArchive archive(zip);
    for (const PackedFile &file : files)
        archive.addFile(file.name, file.path);
    return archive.close();
}

} // namespace

void LargeZip::aKernelDumpOfFiveGibibytes()
{
    FullJob job;
    sparse(job.f.scratch, "Memory.dmp", 5 * gibibyte + 1, "kernel");
    const MemoryPeak memory;
    job.request();
    QVERIFY(job.f.waitForExports(1, patience));
    QVERIFY2(memory.growth() < mostMemory, qPrintable(QString::number(memory.growth())));

    QCOMPARE(job.f.output.lines(), job.printed({}));
    QCOMPARE(zipToolsComplaint({job.f.zip()}), QString());
    const QByteArray inner = zipContents(job.f.zip()).value("SystemDmp.zip");
    QCOMPARE(zipToolsComplaint(job.f.scratch.file("inner.zip", inner),
                               {{job.kernelDump, job.kernelDump}, {job.smallDump, job.smallDump}}),
             QString());
}

void LargeZip::clientDumpsOfTogetherMoreThanFourGibibytes()
{
    if (onWindows() && !isAskedFor())
        QSKIP(slowHere);
    ScratchFolder scratch;
    const QString source = scratch.folder("QZviewer");
    for (const char *name : {"QZviewer/a.dmp", "QZviewer/错误.dmp", "QZviewer/c.dmp"})
        sparse(scratch, name, 3 * gibibyte / 2, name);
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
        sparse(scratch, QString("LogInfo/") + name, size, name);
        originals.append({name, sparse(scratch, QString("originals/") + name, size, name)});
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
    const QString dump = sparse(scratch, "a.dmp", 5 * gibibyte, "dump");
    const QString other = scratch.file("b.dmp", noise(100'000));
    const DebugCapture output;
    {
        ZipArchive archive(zip, {{}, [&](qint64) { QFile::resize(dump, 1'000'000); }});
        archive.addFile("a.dmp", dump);
        archive.addFile("b.dmp", other);
        QVERIFY(archive.close());
    }
    QCOMPARE(output.lines(),
             QStringList(QString("read only 1000000 of 5368709120 bytes: \"%1\"").arg(dump)));
    QCOMPARE(zipToolsComplaint(zip, {{"a.dmp", dump}, {"b.dmp", other}}), QString());
}

void LargeZip::aLogThroughTheWholeJob()
{
    if (!isAskedFor())
        QSKIP(notAskedFor); // the copy in the staging folder is not sparse
    ExportFixture f;
    const QString small = f.log("a.log");
    const QString huge = sparse(f.scratch, "QZSDK/QZviewer/huge.log", 3 * gibibyte, "line\n");
    f.choose({huge, small});
    f.worker.enqueueExport(f.zip());
    QVERIFY(f.waitForExports(1, patience));
    QVERIFY(!QFileInfo::exists(f.staging()));
    QCOMPARE(zipToolsComplaint(f.zip(), {{"SDKLOG/a.log", small}, {"SDKLOG/huge.log", huge}}),
             QString());

    QVERIFY(f.exportAndWait({small})); // the next export works as usual
    QCOMPARE(zipContents(f.zip()),
             (ExportFixture::Contents{{"SDKLOG/a.log", f.scratch.read("QZSDK/QZviewer/a.log")}}));
}

void LargeZip::clientDumpsThatMakeAnArchiveOfMoreThanTwoGibibytes()
{
    if (onWindows())
        QSKIP("there is no unzip here to take the zip out of the zip");
    if (!isAskedFor())
        QSKIP(notAskedFor);
    ExportFixture f;
    hub().sdkLog = false;
    hub().clientDump = true;
    QVector<PackedFile> dumps;
    for (const quint32 seed : {1U, 2U, 3U})
        f.log(QString("%1.dmp").arg(seed), noise(716'000'000, seed));
    for (QDirIterator walk(f.base() + "QZviewer", QDir::Files); walk.hasNext();) {
        const QString path = walk.next();
        dumps.append({walk.fileName(), path});
    }
    QCOMPARE(dumps.size(), 3);
    f.worker.enqueueExport(f.zip());
    QVERIFY(f.waitForExports(1, patience));

    const QString inner = f.scratch.path("inner.zip");
    QProcess unzip;
    unzip.setStandardOutputFile(inner);
    unzip.start("unzip", {"-p", f.zip(), "ClientDump.zip"});
    QVERIFY(unzip.waitForFinished(patience) && unzip.exitCode() == 0);
    QVERIFY(QFileInfo(inner).size() > 2'146'000'000);
    QCOMPARE(zipToolsComplaint(f.zip(), {{"ClientDump.zip", inner}}), QString());
    QCOMPARE(zipToolsComplaint(inner, dumps), QString());
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

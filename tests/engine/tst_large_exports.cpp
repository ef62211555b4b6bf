#include "Diagnostics.h"
#include "FullJob.h"
#include "LargeFiles.h"
#include "MemoryPeak.h"
#include "Noise.h"

#include <QDirIterator>
#include <QProcess>

/// Whole exports of files beyond the limits of Qt's writer.
class LargeExports : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aKernelDumpOfFiveGibibytes();
    void aLogOfThreeGibibytes();
    void clientDumpsThatMakeAnArchiveOfMoreThanTwoGibibytes();

private:
    const Diagnostics diagnostics;
};

namespace {

constexpr int patience = 600'000; // milliseconds; gigabytes on a busy machine

} // namespace

void LargeExports::initTestCase()
{
    keepSparseFilesInMemory();
}

void LargeExports::aKernelDumpOfFiveGibibytes()
{
    FullJob job;
    job.f.scratch.sparseFile("Memory.dmp", 5 * gibibyte + 1, "kernel");
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

void LargeExports::aLogOfThreeGibibytes()
{
    if (!isAskedFor())
        QSKIP(notAskedFor); // the copy in the staging folder is not sparse
    ExportFixture f;
    const QString small = f.log("a.log");
    const QString huge = f.scratch.sparseFile("QZSDK/QZviewer/huge.log", 3 * gibibyte, "line\n");
    f.choose({huge, small});
    const MemoryPeak memory;
    f.worker.enqueueExport(f.zip());
    QVERIFY(f.waitForExports(1, patience));
    QVERIFY2(memory.growth() < mostMemory, qPrintable(QString::number(memory.growth())));
    QVERIFY(!QFileInfo::exists(f.staging()));
    QCOMPARE(zipToolsComplaint(f.zip(), {{"SDKLOG/a.log", small}, {"SDKLOG/huge.log", huge}}),
             QString());

    QVERIFY(f.exportAndWait({small})); // the next export works as usual
    QCOMPARE(zipContents(f.zip()),
             (ExportFixture::Contents{{"SDKLOG/a.log", f.scratch.read("QZSDK/QZviewer/a.log")}}));
}

void LargeExports::clientDumpsThatMakeAnArchiveOfMoreThanTwoGibibytes()
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

QTEST_GUILESS_MAIN(LargeExports)
#include "tst_large_exports.moc"

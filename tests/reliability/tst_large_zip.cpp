#include "Diagnostics.h"
#include "FullJob.h"
#include "Text.h"
#include "ZipArchive.h"

#include <QProcess>

/// Where the zip format and its writer end, for real.
class LargeZip : public QObject
{
    Q_OBJECT

private slots:
    void holdsAsManyEntriesAsTheFormatCanCount();
    void aLogOfTwoGibibytesGoesThroughTheWholeJob();

private:
    const Diagnostics diagnostics;
};

namespace {

/// The whole check of ZipTools is meant for fewer entries: it would look for each among all.
bool succeeds(const QString &tool, const QStringList &arguments)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(tool, arguments);
    return process.waitForFinished(240'000) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

} // namespace

void LargeZip::holdsAsManyEntriesAsTheFormatCanCount()
{
    ScratchFolder scratch;
    const QString zip = scratch.path(text("a.zip"));
    const QString file = scratch.file(text("file"), "contents");
    const int most = ZipLimits().entries;
    DebugCapture output;
    ZipArchive archive(zip);
    for (int i = 0; i < most + 2; ++i)
        archive.addFile(QString::number(i), file);
    QVERIFY(archive.close());
    QCOMPARE(output.lines(),
             QStringList({text("no room in the zip, left out: \"%1\" 8 bytes").arg(most),
                          text("no room in the zip, left out: \"%1\" 8 bytes").arg(most + 1)}));
    const QStringList names = zipEntryNames(zip);
    QCOMPARE(names.size(), most);
    QCOMPARE(names.last(), QString::number(most - 1));
    for (const char *check : {"unzip -tqq", "7z t", "python3 -m zipfile -t"}) {
        QStringList command = text(check).split(QLatin1Char(' '));
        const QString tool = command.takeFirst();
        QVERIFY2(succeeds(tool, command << zip), check);
    }
    const QString count = text("import sys, zipfile; "
                               "sys.exit(len(zipfile.ZipFile(sys.argv[1]).namelist()) != %1)")
                              .arg(most);
    QVERIFY(succeeds(text("python3"), {text("-c"), count, zip}));
}

void LargeZip::aLogOfTwoGibibytesGoesThroughTheWholeJob()
{
    FullJob job;
    const QString huge = job.f.scratch.sparseFile(text("QZSDK/QZviewer/huge.log"), qint64(1) << 31);
    job.f.choose({job.log, huge});
    job.f.worker.enqueueExport(job.f.zip());
    QVERIFY(job.f.waitForExports(1, 240000));
    // The zip has its name, so that nobody takes it for never there, and everything else.
    KeptZips kept;
    job.whole[text("SDKLOG/huge.log")] = QByteArray();
    QCOMPARE(job.packed(&kept), job.whole);
    QCOMPARE(kept.complaint(), QString());
    QVERIFY(job.f.output.lines().contains(
        text("too large for the zip, left empty: \"%1/SDKLOG/huge.log\" 2147483648 bytes")
            .arg(job.f.staging())));
    QCOMPARE(QFileInfo(huge).size(), qint64(1) << 31);
    QVERIFY(!QFileInfo::exists(job.f.staging()));
    job.whole.remove(text("SDKLOG/huge.log"));
    QVERIFY(job.run());
    QCOMPARE(job.packed(), job.whole);
}

QTEST_GUILESS_MAIN(LargeZip)
#include "tst_large_zip.moc"

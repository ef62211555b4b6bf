#include "BackgroundLoop.h"
#include "Diagnostics.h"
#include "Faults.h"
#include "FullJob.h"
#include "Noise.h"
#include "SeededRandom.h"

/// Other programs write, truncate, lock and remove files and folders during exports. Each zip is
/// valid and contains every untouched file, and an undisturbed export is complete.
class MovingFiles : public QObject
{
    Q_OBJECT

private slots:
    void aLogIsCutAndGrowsWhileItIsCopied();
    void aLogIsReplacedAndRemovedWhileItIsCopied();
    void theRightToReadComesAndGoes();
    void theSourceFolderComesAndGoes();
    void theStagingFolderIsTakenAway();
    void theSdkFolderIsTakenAway();
    void theFolderOfTheZipIsReadOnly();
    void theStagingFolderOfAKilledRunIsReadOnly();
};

namespace {

using Contents = FullJob::Contents;

const QByteArray filling = noise(30'000);

int exportCount()
{
    return times("VANTREL_EXPORTS", 20);
}

/// A full job with a second chosen log that other programs modify.
struct BusyJob : FullJob
{
    BusyJob()
        : FullJob(filling)
        , busy(f.log("busy.log", contents))
    {
    }

    void requestBoth()
    {
        f.choose({log, busy});
        f.worker.enqueueExport(f.zip());
    }

    bool runBoth()
    {
        requestBoth();
        return f.waitForExports();
    }

    /// Gets the zip's copy of the modified log and checks the rest of the zip.
    bool restIsWhole(QByteArray &ofBusy)
    {
        Contents found = packed(&kept);
        ofBusy = found.take("SDKLOG/busy.log");
        found.remove("SDKLOG/busy.log");
        return found == whole;
    }

    void isWholeUndisturbed()
    {
        f.scratch.file("QZSDK/QZviewer/busy.log", contents);
        QVERIFY(QFile::setPermissions(busy, Everybody::mayReadAndWrite));
        f.output.take();
        QVERIFY(runBoth());
        QByteArray ofBusy;
        QVERIFY(restIsWhole(ofBusy));
        QVERIFY(ofBusy == contents);
        QVERIFY(!QFileInfo::exists(f.staging()));
        QCOMPARE(kept.complaint(), QString());
    }

    KeptZips kept;
    const QByteArray contents = noise(1 << 20, 7);
    QString busy;
};

/// Whether @p copy is a possible reading of @p log while it was being truncated: the system fills
/// the rest of a block with zeros when it truncates a file.
bool isOf(const QByteArray &copy, const QByteArray &log)
{
    if (copy.size() > log.size())
        return false;
    for (int i = 0; i < copy.size(); ++i) {
        if (copy.at(i) != log.at(i) && copy.at(i) != '\0')
            return false;
    }
    return true;
}

/// An undisturbed export.
void isWhole(FullJob &job, KeptZips &kept)
{
    QVERIFY(job.run());
    QCOMPARE(difference(job.packed(&kept), job.whole), QString());
    QVERIFY(!QFileInfo::exists(job.f.staging()));
    QCOMPARE(kept.complaint(), QString());
}

void openToEverybody(const FullJob &job)
{
    for (const QString &folder : {job.f.scratch.path(), job.f.base(), job.f.base() + "QZviewer"})
        QVERIFY(QFile::setPermissions(folder, Everybody::mayDoAll));
}

} // namespace

void MovingFiles::aLogIsCutAndGrowsWhileItIsCopied()
{
    BusyJob job;
    {
        BackgroundLoop writer([&](int round) {
            QFile file(job.busy);
            if (!file.open(QIODevice::ReadWrite))
                return;
            const int cut = (round * 7919) % job.contents.size();
            file.resize(cut);
            file.seek(cut);
            file.write(job.contents.mid(cut));
        });
        for (int i = exportCount(); i > 0; --i) {
            QVERIFY(job.runBoth());
            QByteArray found;
            QVERIFY(job.restIsWhole(found));
            QVERIFY(isOf(found, job.contents));
        }
        QVERIFY(writer.roundsSoFar() > 0);
    }
    job.isWholeUndisturbed();
}

void MovingFiles::aLogIsReplacedAndRemovedWhileItIsCopied()
{
    BusyJob job;
    {
        BackgroundLoop other([&](int round) {
            const QString next = job.busy + ".next";
            QFile file(next);
            if (file.open(QIODevice::WriteOnly))
                file.write(job.contents);
            file.close();
            QFile::remove(job.busy);
            if (round % 3 != 0)
                QFile::rename(next, job.busy);
        });
        for (int i = exportCount(); i > 0; --i) {
            QVERIFY(job.runBoth());
            QByteArray found;
            QVERIFY(job.restIsWhole(found));
            QVERIFY(found.isEmpty() || found == job.contents);
        }
        QVERIFY(other.roundsSoFar() > 0);
    }
    job.isWholeUndisturbed();
}

void MovingFiles::theRightToReadComesAndGoes()
{
    BusyJob job;
    openToEverybody(job);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(QFile::remove(job.busy));
    {
        const OrdinaryUser owner;
        job.f.scratch.file("QZSDK/QZviewer/busy.log", job.contents);
    }
    {
        BackgroundLoop owner([&](int round) {
            QFile::setPermissions(job.busy, round % 2 == 0 ? QFileDevice::Permissions()
                                                           : Everybody::mayReadAndWrite);
        });
        for (int i = exportCount(); i > 0; --i) {
            {
                const OrdinaryUser user;
                QVERIFY(job.runBoth());
            }
            QByteArray found;
            QVERIFY(job.restIsWhole(found));
            QVERIFY(found.isEmpty() || found == job.contents);
        }
        QVERIFY(owner.roundsSoFar() > 0);
    }
    job.isWholeUndisturbed();
}

void MovingFiles::theSourceFolderComesAndGoes()
{
    FullJob job(filling);
    KeptZips kept;
    const QString source = job.f.base() + "QZviewer";
    const QString away = job.f.scratch.path("away");
    {
        BackgroundLoop other([&](int) {
            QDir().rename(source, away);
            QDir().rename(away, source);
        });
        for (int i = exportCount(); i > 0; --i) {
            QVERIFY(job.run());
            const Contents found = job.packed(&kept);
            for (auto entry = found.begin(); entry != found.end(); ++entry)
                QVERIFY2(entry.value() == job.whole.value(entry.key()) ||
                             entry.key() == "ClientDump.zip/client.dmp",
                         qPrintable(entry.key()));
        }
        QVERIFY(other.roundsSoFar() > 0);
    }
    isWhole(job, kept);
}

void MovingFiles::theStagingFolderIsTakenAway()
{
    FullJob job(filling);
    KeptZips kept;
    {
        BackgroundLoop other([&](int) { QDir(job.f.staging()).removeRecursively(); });
        for (int i = exportCount(); i > 0; --i) {
            job.f.output.take();
            job.request();
            QVERIFY(job.settles());
            kept.keep(job.f.zip());
        }
        QVERIFY(other.roundsSoFar() > 0);
    }
    QVERIFY(job.f.scratch.read("QZSDK/QZviewer/a.log") == "line\n" + filling);
    isWhole(job, kept);
}

void MovingFiles::theSdkFolderIsTakenAway()
{
    FullJob job(filling);
    KeptZips kept;
    const QString sdk = job.f.scratch.path("QZSDK");
    const QString away = job.f.scratch.path("away");
    for (int i = exportCount(); i > 0; --i) {
        job.f.output.take();
        job.request();
        if (!job.f.worker.isRunning())
            job.f.worker.start();
        QVERIFY(QDir().rename(sdk, away)); // at any point of the export
        QVERIFY(job.settles());
        // The SDKLOG folder is created with its parents.
        QVERIFY(!QFileInfo::exists(sdk) || QDir(sdk).removeRecursively());
        QVERIFY(QDir().rename(away, sdk));
        kept.keep(job.f.zip());
        QDir(job.f.staging()).removeRecursively(); // moved away with the folder
    }
    isWhole(job, kept);
}

void MovingFiles::theFolderOfTheZipIsReadOnly()
{
    const Diagnostics diagnostics;
    FullJob job(filling);
    KeptZips kept;
    openToEverybody(job);
    const QString folder = job.f.scratch.folder("zips");
    const QString zip = folder + "/a.zip";
    QVERIFY(QFile::setPermissions(folder, Everybody::mayReadAndEnter));
    {
        const OrdinaryUser user;
        job.f.choose({job.log});
        job.f.worker.enqueueExport(zip);
        QVERIFY(job.f.waitForExports());
    }
    QVERIFY(job.f.output.contains(QString("cannot write zip \"%1\"").arg(zip)));
    QVERIFY(!QFileInfo::exists(zip));
    QVERIFY(!QFileInfo::exists(job.f.staging()));
    isWhole(job, kept);
}

void MovingFiles::theStagingFolderOfAKilledRunIsReadOnly()
{
    FullJob job(filling);
    KeptZips kept;
    openToEverybody(job);
    const QString staging = job.f.scratch.folder("QZSDK/LogInfo");
    job.f.scratch.file("QZSDK/LogInfo/left.txt", "left");
    QVERIFY(QFile::setPermissions(staging, Everybody::mayReadAndEnter));
    {
        const OrdinaryUser user;
        job.request();
        QVERIFY(job.settles()); // "mkpath failed": the request is dropped
    }
    QCOMPARE(job.f.scratch.read("QZSDK/LogInfo/left.txt"), QByteArray("left"));
    QVERIFY(QFile::setPermissions(staging, Everybody::mayDoAll));
    job.whole["left.txt"] = "left";
    isWhole(job, kept);
}

QTEST_GUILESS_MAIN(MovingFiles)
#include "tst_moving_files.moc"

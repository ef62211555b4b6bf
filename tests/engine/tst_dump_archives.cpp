#include "DumpArchives.h"

#include "Diagnostics.h"
#include "ExportFixture.h"
#include "FakeSystem.h"
#include "Faults.h"
#include "Machine.h"
#include "SystemDumps.h"
#include "WorkingFolder.h"
#include "ZipArchive.h"

class DumpArchives : public QObject
{
    Q_OBJECT

private slots:
    void theKernelDumpIsNamedByItsFullPathAsOpened();
    void theKernelDumpIsReadableWhenItsProbeOpens();
    void aMissingKernelDumpIsPrintedAndTheRestPacked();
    void onlyTheNewestSmallDumpIsPackedByItsFullPath();
    void smallDumpsAreFoundInSubFoldersToo();
    void aNameThatContainsTheMarkIsASmallDump();
    void theMarkIsCaseSensitive();
    void theKernelDumpIsExemptBeingReadByItsName();
    void theDumpPathsAreQueriedOnce();
    void aFolderWithAMatchingNameCountsToo();
    void linksAndHiddenFilesAreNoSmallDumps();
    void hundredsOfSmallDumpsWithEqualTimes();
    void withoutAnyDumpTheArchiveIsEmptyAndBothArePrinted();
    void aDumpThatVanishedIsLeftOut();
    void aDumpOfNoBytesIsPacked();
    void anUnreadableSmallDumpIsEmptyOrMissing_data();
    void anUnreadableSmallDumpIsEmptyOrMissing();
    void anUnreadableKernelDumpCountsAsMissing();
    void anArchiveThatCannotBeWrittenIsNoFailure();

    void clientDumpsAreNamedByTheirFileNames();
    void clientDumpsInSubFoldersAreNotTaken();
    void linksAreNoClientDumps();
    void aClientFileThatContainsTheMarkIsADump();
    void withoutClientDumpsTheArchiveIsEmptyAndNothingIsPrinted();
    void aMissingSourceFolderMakesAnEmptyArchive();
    void withoutASourceTheWorkingFolderIsNotSearched();
    void anEmptyFolderIsRefused();

private:
    const Diagnostics diagnostics;
};

namespace {

const QDateTime noon = QDateTime::fromSecsSinceEpoch(1'700'000'000, Qt::UTC);

/// A worker on a fake system with dumps in the scratch folder.
struct Dumps
{
    Dumps()
    {
        machine.dumps = {f.scratch.path("Memory.dmp"), f.scratch.path("Memory.dmp"),
                         f.scratch.path("Minidumps/"), ".dmp", false};
    }

    QString small(const QString &name, int age, const QByteArray &contents = "small")
    {
        return f.scratch.file("Minidumps/" + name, contents, noon.addSecs(-age));
    }

    ExportFixture::Contents packed()
    {
        const QString staging = f.scratch.folder("staging");
        if (!f.worker.saveSystemDump(staging))
            return {{"failed", QByteArray()}};
        return zipContents(staging + "/SystemDmp.zip");
    }

    ExportFixture::Contents packedOfClient()
    {
        const QString staging = f.scratch.folder("staging");
        if (!f.worker.saveClientDump(staging))
            return {{"failed", QByteArray()}};
        return zipContents(staging + "/ClientDump.zip");
    }

    QString withKernelDump(const QByteArray &contents = "kernel")
    {
        return f.scratch.file("Memory.dmp", contents);
    }

    /// Makes the dump at @p path unreadable, with the other dumps accessible to OrdinaryUser.
    void lock(const QString &path)
    {
        QVERIFY(QFile::setPermissions(path, QFileDevice::Permissions()));
        for (const QString &folder : {f.scratch.path(), f.scratch.folder("staging")})
            QVERIFY(QFile::setPermissions(folder, Everybody::mayDoAll));
    }

    FakeSystem machine;
    ExportFixture f{machine.probes()};
};

} // namespace

void DumpArchives::theKernelDumpIsNamedByItsFullPathAsOpened()
{
    Dumps d;
    const QString path = d.withKernelDump();
    d.machine.dumps.kernelDumpTestPath = d.f.scratch.path("Minidumps/../Memory.dmp");
    const QString small = d.small("a.dmp", 0);
    QCOMPARE(d.packed(),
             (ExportFixture::Contents{{entryOf(path), "kernel"}, {entryOf(small), "small"}}));
    QCOMPARE(zipEntryNames(d.f.scratch.path("staging/SystemDmp.zip")),
             QStringList({entryOf(path), entryOf(small)}));
    // The full path, after the 30 bytes of the first entry's header.
    QCOMPARE(d.f.scratch.read("staging/SystemDmp.zip").mid(30, path.toUtf8().size()),
             path.toUtf8());
    QCOMPARE(d.f.output.lines(), QStringList());
}

void DumpArchives::theKernelDumpIsReadableWhenItsProbeOpens()
{
    Dumps d;
    QVERIFY(!d.f.worker.memoryDumpReadable());
    d.withKernelDump();
    QVERIFY(d.f.worker.memoryDumpReadable());
    d.machine.dumps.kernelDumpTestPath = d.f.scratch.path(); // a folder is not a dump
    QVERIFY(!d.f.worker.memoryDumpReadable());
    d.machine.dumps.kernelDumpTestPath.clear();
    QVERIFY(!d.f.worker.memoryDumpReadable());
    QCOMPARE(d.f.output.lines(), QStringList());
}

void DumpArchives::aMissingKernelDumpIsPrintedAndTheRestPacked()
{
    Dumps d;
    const QString small = d.small("a.dmp", 0);
    QCOMPARE(d.packed(), (ExportFixture::Contents{{entryOf(small), "small"}}));
    QCOMPARE(d.f.output.lines(), QStringList(noKernelDump));
}

void DumpArchives::onlyTheNewestSmallDumpIsPackedByItsFullPath()
{
    Dumps d;
    d.small("a.dmp", 20);
    const QString newest = d.small("b.dmp", 10, "newest");
    d.small("c.dmp", 30);
    QCOMPARE(d.packed(), (ExportFixture::Contents{{entryOf(newest), "newest"}}));
    QVERIFY(newest.contains("/Minidumps/b.dmp"));
}

void DumpArchives::smallDumpsAreFoundInSubFoldersToo()
{
    Dumps d;
    d.small("a.dmp", 20);
    const QString newest = d.small("deep/er/b.dmp", 10, "newest");
    QCOMPARE(d.packed(), (ExportFixture::Contents{{entryOf(newest), "newest"}}));
}

void DumpArchives::aNameThatContainsTheMarkIsASmallDump()
{
    Dumps d;
    d.small("a.dmp", 20);
    const QString newest = d.small("b.dmp.old", 10);
    d.small("dmp", 0);
    d.small("c.txt", 0);
    QCOMPARE(d.packed(), (ExportFixture::Contents{{entryOf(newest), "small"}}));
}

void DumpArchives::theMarkIsCaseSensitive()
{
    Dumps d;
    d.small("A.DMP", 0);
    QCOMPARE(d.packed(), ExportFixture::Contents());
    QCOMPARE(d.f.output.lines(), QStringList({noKernelDump, noSmallDump}));
}

void DumpArchives::theKernelDumpIsExemptBeingReadByItsName()
{
    Dumps d;
    const QString kernel = d.f.scratch.file("MEMORY.DMP", "kernel");
    d.machine.dumps.kernelDump = d.machine.dumps.kernelDumpTestPath = kernel;
    d.small("A.DMP", 0);
    QCOMPARE(d.packed(), (ExportFixture::Contents{{entryOf(kernel), "kernel"}}));
    QCOMPARE(d.f.output.lines(), QStringList(noSmallDump));
}

void DumpArchives::theDumpPathsAreQueriedOnce()
{
    Dumps d;
    d.machine.calledProbes.clear();
    (void)d.packed();
    QCOMPARE(d.machine.calledProbes, QStringList("crashDumpPaths"));
}

void DumpArchives::aFolderWithAMatchingNameCountsToo()
{
    Dumps d;
    d.small("a.dmp", 20);
    d.f.scratch.folder("Minidumps/folder.dmp"); // the newest
    (void)d.packed();
    QCOMPARE(zipEntryNames(d.f.scratch.path("staging/SystemDmp.zip")),
             QStringList(entryOf(d.f.scratch.path("Minidumps/folder.dmp"))));
}

void DumpArchives::linksAndHiddenFilesAreNoSmallDumps()
{
    Dumps d;
    d.small("a.dmp", 20);
    const QString elsewhere = d.f.scratch.file("elsewhere", "elsewhere", noon);
    if (!makeLink(elsewhere, d.f.scratch.path("Minidumps/link.dmp")))
        QSKIP("links cannot be created on this system");
    d.small(".dmp", 0); // hidden on Linux
    QCOMPARE(minidumps(d.machine.dumps).filter("link"), QStringList());
    QVERIFY(minidumps(d.machine.dumps).contains(d.f.scratch.path("Minidumps/a.dmp")));
    if (onWindows())
        return; // names do not hide files there
    QCOMPARE(minidumps(d.machine.dumps), QStringList(d.f.scratch.path("Minidumps/a.dmp")));
}

void DumpArchives::hundredsOfSmallDumpsWithEqualTimes()
{
    Dumps d;
    for (int i = 0; i < 300; ++i)
        d.small(QString("%1.dmp").arg(i, 3, 10, QChar('0')), 0);
    const QStringList found = minidumps(d.machine.dumps);
    QCOMPARE(found.size(), 300);
    QCOMPARE(d.packed(),
             (ExportFixture::Contents{{entryOf(d.f.scratch.path("Minidumps/299.dmp")), "small"}}));
}

void DumpArchives::withoutAnyDumpTheArchiveIsEmptyAndBothArePrinted()
{
    Dumps d;
    QCOMPARE(d.packed(), ExportFixture::Contents());
    QVERIFY(QFile::exists(d.f.scratch.path("staging/SystemDmp.zip")));
    QCOMPARE(d.f.output.lines(), QStringList({noKernelDump, noSmallDump}));
}

void DumpArchives::aDumpThatVanishedIsLeftOut()
{
    Dumps d;
    const QString gone = d.small("gone.dmp", 0);
    const QStringList listed = minidumps(d.machine.dumps);
    QCOMPARE(listed, QStringList(gone));
    QVERIFY(QFile::remove(gone));
    {
        ZipArchive archive(d.f.zip());
        addDump(archive, gone, listed.first());
    }
    QCOMPARE(zipContents(d.f.zip()), ExportFixture::Contents());

    // The kernel dump disappears between its test and its packing.
    writeSystemDumps(d.f.zip(), d.machine.dumps, true);
    QCOMPARE(zipContents(d.f.zip()), ExportFixture::Contents());
}

void DumpArchives::aDumpOfNoBytesIsPacked()
{
    Dumps d;
    const QString kernel = d.withKernelDump({});
    const QString small = d.small("a.dmp", 0, {});
    QCOMPARE(d.packed(), (ExportFixture::Contents{{entryOf(kernel), {}}, {entryOf(small), {}}}));
    QCOMPARE(d.f.output.lines(), QStringList());
}

void DumpArchives::anUnreadableSmallDumpIsEmptyOrMissing_data()
{
    QTest::addColumn<bool>("unreadableIsMissing");
    QTest::newRow("empty") << false;
    QTest::newRow("missing") << true;
}

void DumpArchives::anUnreadableSmallDumpIsEmptyOrMissing()
{
    if (!OrdinaryUser::available())
        QSKIP("read permission cannot be revoked on this system");
    QFETCH(bool, unreadableIsMissing);
    Dumps d;
    d.machine.dumps.unreadableIsMissing = unreadableIsMissing;
    const QString readable = d.small("a.dmp", 20);
    const QString locked = d.small("b.dmp", 10, "secret");
    d.lock(locked);
    const OrdinaryUser user;
    QCOMPARE(d.packed(), unreadableIsMissing
                             ? (ExportFixture::Contents{{entryOf(readable), "small"}})
                             : (ExportFixture::Contents{{entryOf(locked), {}}}));
}

void DumpArchives::anUnreadableKernelDumpCountsAsMissing()
{
    if (!OrdinaryUser::available())
        QSKIP("read permission cannot be revoked on this system");
    Dumps d;
    d.lock(d.withKernelDump("secret"));
    const OrdinaryUser user;
    QCOMPARE(d.packed(), ExportFixture::Contents());
    QCOMPARE(d.f.output.lines(), QStringList({noKernelDump, noSmallDump}));
}

void DumpArchives::anArchiveThatCannotBeWrittenIsNoFailure()
{
    Dumps d;
    d.withKernelDump();
    const QString staging = d.f.scratch.folder("staging");
    d.f.scratch.folder("staging/SystemDmp.zip");
    d.f.scratch.folder("staging/ClientDump.zip");
    QVERIFY(d.f.worker.saveSystemDump(staging));
    QVERIFY(d.f.output.take().first().startsWith("cannot write zip"));
    QVERIFY(d.f.worker.saveClientDump(staging));
    QVERIFY(d.f.output.take().first().startsWith("cannot write zip"));
}

void DumpArchives::clientDumpsAreNamedByTheirFileNames()
{
    Dumps d;
    d.f.log("one.dmp", "1");
    d.f.log("二.dmp", "2");
    d.f.log("QZviewer.log", "no dump");
    QCOMPARE(d.packedOfClient(), (ExportFixture::Contents{{"one.dmp", "1"}, {"二.dmp", "2"}}));
}

void DumpArchives::clientDumpsInSubFoldersAreNotTaken()
{
    Dumps d;
    d.f.log("one.dmp", "1");
    d.f.log("folder/two.dmp", "2");
    d.f.log("folder.dmp/three.dmp", "3");
    QCOMPARE(d.packedOfClient(), (ExportFixture::Contents{{"one.dmp", "1"}}));
}

void DumpArchives::linksAreNoClientDumps()
{
    Dumps d;
    d.f.log("one.dmp", "1");
    if (!makeLink(d.f.scratch.file("elsewhere", "2"), d.f.scratch.path("QZSDK/QZviewer/link.dmp")))
        QSKIP("links cannot be created on this system");
    QCOMPARE(d.packedOfClient(), (ExportFixture::Contents{{"one.dmp", "1"}}));
}

void DumpArchives::aClientFileThatContainsTheMarkIsADump()
{
    Dumps d;
    d.f.log("one.dmp.old", "1");
    d.f.log("TWO.DMP", "2");
    QCOMPARE(d.packedOfClient(), (ExportFixture::Contents{{"one.dmp.old", "1"}}));
}

void DumpArchives::withoutClientDumpsTheArchiveIsEmptyAndNothingIsPrinted()
{
    Dumps d;
    QCOMPARE(d.packedOfClient(), ExportFixture::Contents());
    QVERIFY(QFile::exists(d.f.scratch.path("staging/ClientDump.zip")));
    QCOMPARE(d.f.output.lines(), QStringList());
}

void DumpArchives::aMissingSourceFolderMakesAnEmptyArchive()
{
    Dumps d;
    d.f.worker.setLogSourceFolder("no such source");
    QCOMPARE(d.packedOfClient(), ExportFixture::Contents());
    QCOMPARE(d.f.output.lines(), QStringList());
}

void DumpArchives::withoutASourceTheWorkingFolderIsNotSearched()
{
    WorkingFolder folder;
    folder.file("mine.dmp");
    writeClientDumps(folder.path("client.zip"), QString());
    QCOMPARE(zipContents(folder.path("client.zip")), ExportFixture::Contents());
}

void DumpArchives::anEmptyFolderIsRefused()
{
    Dumps d;
    d.machine.calledProbes.clear();
    QVERIFY(!d.f.worker.saveSystemDump(QString()));
    QVERIFY(!d.f.worker.saveClientDump(QString()));
    QCOMPARE(d.machine.calledProbes, QStringList());
    QCOMPARE(d.f.output.lines(), QStringList());
    QVERIFY(!QFile::exists("/SystemDmp.zip") && !QFile::exists("/ClientDump.zip"));
}

QTEST_GUILESS_MAIN(DumpArchives)
#include "tst_dump_archives.moc"

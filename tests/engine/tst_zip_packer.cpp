#include "DebugCapture.h"
#include "Diagnostics.h"
#include "Faults.h"
#include "Machine.h"
#include "ScratchFolder.h"
#include "ZipContents.h"
#include "ZipPacker.h"

#include <QTest>

class ZipPackerTest : public QObject
{
    Q_OBJECT

private slots:
    void packsTheTreeAndRemovesIt();
    void namesNestedFilesByTheirPathsOnly();
    void walksByNameWithoutRegardToCase();
    void printsEachEntryItsFolderAndTheRoot();
    void makesAnEmptyZipOfAnEmptyFolder();
    void leavesAHiddenFileAndWithItTheFolder();
    void overwritesAZipThatIsThere();
    void removesTheFolderEvenWhenTheZipCannotBeWritten();
    void removesFilesWhoseNamesMeanSomethingToQt();
    void removesReadOnlyFiles();
    void printsAnEntryOnceItWasAdded();
    void followsNoLinkOutOfTheFolder();
    void packsAndKeepsWhatCannotBeRemovedAndLogsIt();
    void refusesToRemoveAnEmptyPath();
    void treatsAMissingFolderAsRemoved();
    void namesEntriesAlikeForARootThatEndsInASlash_data();
    void namesEntriesAlikeForARootThatEndsInASlash();
    void removesTheFolderBeforeItClosesTheZip();

private:
    const Diagnostics diagnostics;
};

namespace {

using Contents = QMap<QString, QByteArray>;

} // namespace

void ZipPackerTest::packsTheTreeAndRemovesIt()
{
    ScratchFolder scratch;
    scratch.file("LogInfo/NICInfo.txt", "nic");
    scratch.file("LogInfo/SDKLOG/a.log", "log");
    scratch.file("LogInfo/SDKLOG/gentl_cxp_log/g.txt", "gentl");
    const QString folder = scratch.path("LogInfo");
    const QString zip = scratch.path("a.zip");
    DebugCapture output;
    QVERIFY(zipFolder(folder, zip));

    QCOMPARE(zipContents(zip), (Contents{{"NICInfo.txt", "nic"},
                                         {"SDKLOG/a.log", "log"},
                                         {"SDKLOG/gentl_cxp_log/g.txt", "gentl"}}));
    QVERIFY(!QFileInfo::exists(folder));
}

void ZipPackerTest::namesNestedFilesByTheirPathsOnly()
{
    ScratchFolder scratch;
    scratch.folder("in/empty/deeper");
    scratch.file("in/a/b/c/d.txt", "d");
    const QString zip = scratch.path("a.zip");
    DebugCapture output;
    zipFolder(scratch.path("in"), zip);
    QCOMPARE(zipEntryNames(zip), QStringList("a/b/c/d.txt"));
    QVERIFY(!QFileInfo::exists(scratch.path("in")));
}

void ZipPackerTest::walksByNameWithoutRegardToCase()
{
    ScratchFolder scratch;
    for (const char *name : {"in/b.txt", "in/A.txt", "in/C.txt", "in/aa/x.txt"})
        scratch.file(name, "x");
    const QString zip = scratch.path("a.zip");
    DebugCapture output;
    zipFolder(scratch.path("in"), zip);
    QCOMPARE(zipEntryNames(zip), QStringList({"A.txt", "aa/x.txt", "b.txt", "C.txt"}));
}

void ZipPackerTest::printsEachEntryItsFolderAndTheRoot()
{
    ScratchFolder scratch;
    scratch.file("in/sub/a.txt", "a");
    scratch.file("in/z.txt", "z");
    const QString root = scratch.path("in");
    DebugCapture output;
    zipFolder(root, scratch.path("a.zip"));
    QCOMPARE(output.lines(), QStringList({QString("\"sub/a.txt\" \"%1/sub\" \"%1\"").arg(root),
                                          QString("\"z.txt\" \"%1\" \"%1\"").arg(root)}));
}

void ZipPackerTest::makesAnEmptyZipOfAnEmptyFolder()
{
    ScratchFolder scratch;
    const QString folder = scratch.folder("in");
    const QString zip = scratch.path("a.zip");
    QVERIFY(zipFolder(folder, zip));
    QCOMPARE(zipContents(zip), Contents());
    QVERIFY(!QFileInfo::exists(folder));
}

void ZipPackerTest::leavesAHiddenFileAndWithItTheFolder()
{
    ScratchFolder scratch;
    hide(scratch.file("in/.hidden", "secret"));
    scratch.file("in/seen", "x");
    const QString zip = scratch.path("a.zip");
    DebugCapture output;
    QVERIFY(zipFolder(scratch.path("in"), zip));
    QCOMPARE(zipEntryNames(zip), QStringList("seen"));
    QCOMPARE(scratch.read("in/.hidden"), QByteArray("secret"));
    QVERIFY(!QFileInfo::exists(scratch.path("in/seen")));
    QVERIFY(!removeFolder(scratch.path("in")));
}

void ZipPackerTest::overwritesAZipThatIsThere()
{
    ScratchFolder scratch;
    const QString zip = scratch.file("a.zip", QByteArray(5000, 'x'));
    scratch.file("in/new", "new");
    DebugCapture output;
    zipFolder(scratch.path("in"), zip);
    QCOMPARE(zipContents(zip), (Contents{{"new", "new"}}));
}

void ZipPackerTest::removesTheFolderEvenWhenTheZipCannotBeWritten()
{
    ScratchFolder scratch;
    scratch.file("in/x", "x");
    DebugCapture output;
    QVERIFY(zipFolder(scratch.path("in"), scratch.path("missing/a.zip")));
    QVERIFY(!QFileInfo::exists(scratch.path("missing")));
    QVERIFY(!QFileInfo::exists(scratch.path("in")));
    QVERIFY(output.contains("cannot write zip"));
}

void ZipPackerTest::removesFilesWhoseNamesMeanSomethingToQt()
{
    ScratchFolder scratch;
    const QString name = ":a.log"; // as a bare name, a resource path
    const QString folder = scratch.folder("in");
    QFile file(folder + '/' + name);
    if (!file.open(QIODevice::WriteOnly) || !QDir(folder).entryList().contains(name))
        QSKIP("no file can have such a name here");
    file.close();
    const QString zip = scratch.path("a.zip");
    DebugCapture output;
    QVERIFY(zipFolder(folder, zip));
    QCOMPARE(zipEntryNames(zip), QStringList(name));
    QVERIFY(!QFileInfo::exists(folder));
}

void ZipPackerTest::removesReadOnlyFiles()
{
    // Like copies of read-only logs.
    ScratchFolder scratch;
    for (const char *name : {"in/a.log", "in/sub/b.log"})
        QVERIFY(QFile::setPermissions(scratch.file(name, "x"), QFileDevice::ReadOwner));
    const QString zip = scratch.path("a.zip");
    DebugCapture output;
    QVERIFY(zipFolder(scratch.path("in"), zip));
    QCOMPARE(zipEntryNames(zip), QStringList({"a.log", "sub/b.log"}));
    QVERIFY(!QFileInfo::exists(scratch.path("in")));
    QVERIFY(!output.contains("folder not removed"));
}

void ZipPackerTest::printsAnEntryOnceItWasAdded()
{
    if (!OrdinaryUser::available())
        QSKIP("read permission cannot be revoked on this system");
    ScratchFolder scratch;
    const QString locked = scratch.file("in/a.log", "secret");
    QVERIFY(QFile::setPermissions(locked, QFileDevice::Permissions()));
    QVERIFY(QFile::setPermissions(scratch.path(), Everybody::mayDoAll));
    QVERIFY(QFile::setPermissions(scratch.path("in"), Everybody::mayDoAll));
    DebugCapture output;
    {
        const OrdinaryUser user;
        QVERIFY(zipFolder(scratch.path("in"), scratch.path("a.zip")));
    }
    // Read errors come first.
    QCOMPARE(output.lines().size(), 2);
    QVERIFY(output.lines().first().startsWith(QString("cannot read \"%1\"").arg(locked)));
    QCOMPARE(output.lines().last(), QString("\"a.log\" \"%1\" \"%1\"").arg(scratch.path("in")));
}

void ZipPackerTest::followsNoLinkOutOfTheFolder()
{
    ScratchFolder scratch;
    scratch.file("precious/data", "keep me");
    scratch.file("in/x", "x");
    if (!makeLink(scratch.path("precious"), scratch.path("in/way out")) ||
        !makeLink(scratch.path("in"), scratch.path("in/circle")))
        QSKIP("links cannot be created on this system");
    const QString zip = scratch.path("a.zip");
    DebugCapture output;
    QVERIFY(zipFolder(scratch.path("in"), zip));
    QCOMPARE(zipEntryNames(zip), QStringList("x"));
    QCOMPARE(scratch.read("precious/data"), QByteArray("keep me"));
    QVERIFY(!QFileInfo::exists(scratch.path("in")));
}

void ZipPackerTest::packsAndKeepsWhatCannotBeRemovedAndLogsIt()
{
    if (!OrdinaryUser::available())
        QSKIP("write permission cannot be revoked on this system");
    ScratchFolder scratch;
    scratch.file("in/locked/a.log", "a");
    const QString folder = scratch.path("in");
    const QString zip = scratch.path("a.zip");
    for (const char *locked : {"in/locked", "in"})
        QVERIFY(QFile::setPermissions(scratch.path(locked), Everybody::mayReadAndEnter));
    QVERIFY(QFile::setPermissions(scratch.path(), Everybody::mayDoAll));
    DebugCapture output;
    {
        const OrdinaryUser user;
        QVERIFY(zipFolder(folder, zip));
    }
    QCOMPARE(zipContents(zip), (Contents{{"locked/a.log", "a"}}));
    QCOMPARE(scratch.read("in/locked/a.log"), QByteArray("a"));
    QCOMPARE(output.lines().last(), QString("folder not removed: \"%1\"").arg(folder));
    // So that the scratch folder can be removed.
    for (const char *locked : {"in", "in/locked"})
        QFile::setPermissions(scratch.path(locked), Everybody::mayDoAll);
}

void ZipPackerTest::refusesToRemoveAnEmptyPath()
{
    QVERIFY(!removeFolder(QString()));
}

void ZipPackerTest::treatsAMissingFolderAsRemoved()
{
    ScratchFolder scratch;
    QVERIFY(removeFolder(scratch.path("nothing here")));
}

void ZipPackerTest::namesEntriesAlikeForARootThatEndsInASlash_data()
{
    QTest::addColumn<QString>("end");
    for (const char *end : {"", "/", "//"})
        QTest::addRow("\"%s\"", end) << end;
}

void ZipPackerTest::namesEntriesAlikeForARootThatEndsInASlash()
{
    QFETCH(QString, end);
    ScratchFolder scratch;
    scratch.file("in/abc.txt", "abc");
    scratch.file("in/sub/def.txt", "def");
    const QString zip = scratch.path("a.zip");
    const DebugCapture output;
    QVERIFY(zipFolder(scratch.path("in") + end, zip));
    QCOMPARE(zipEntryNames(zip), QStringList({"abc.txt", "sub/def.txt"}));
    QVERIFY(!QFileInfo::exists(scratch.path("in")));
}

void ZipPackerTest::removesTheFolderBeforeItClosesTheZip()
{
    if (!FileSizeLimit::available())
        QSKIP("this system cannot limit the size of files");
    ScratchFolder scratch;
    const QString folder = scratch.path("in");
    scratch.file("in/x", "x");
    scratch.file("in/.hidden");
    const QString zip = scratch.path("a.zip");
    const DebugCapture output;
    {
        const FileSizeLimit limit(40); // enough for the file, not for the zip's directory
        QVERIFY(zipFolder(folder, zip));
    }
    QVERIFY(!QFileInfo::exists(zip));
    const QStringList lines = output.lines();
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.at(0), QString("\"x\" \"%1\" \"%1\"").arg(folder));
    QCOMPARE(lines.at(1), QString("folder not removed: \"%1\"").arg(folder));
    QVERIFY(lines.at(2).startsWith(QString("zip not written: \"%1\"").arg(zip)));
}

QTEST_GUILESS_MAIN(ZipPackerTest)
#include "tst_zip_packer.moc"

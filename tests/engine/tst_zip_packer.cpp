#include "DebugCapture.h"
#include "Diagnostics.h"
#include "Faults.h"
#include "ScratchFolder.h"
#include "Text.h"
#include "ZipContents.h"
#include "ZipPacker.h"

#include <QtTest>

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
    scratch.file(text("LogInfo/NICInfo.txt"), "nic");
    scratch.file(text("LogInfo/SDKLOG/a.log"), "log");
    scratch.file(text("LogInfo/SDKLOG/gentl_cxp_log/g.txt"), "gentl");
    const QString folder = scratch.path(text("LogInfo"));
    const QString zip = scratch.path(text("a.zip"));
    DebugCapture output;
    QVERIFY(zipFolder(folder, zip));

    QCOMPARE(zipContents(zip), (Contents{{text("NICInfo.txt"), "nic"},
                                         {text("SDKLOG/a.log"), "log"},
                                         {text("SDKLOG/gentl_cxp_log/g.txt"), "gentl"}}));
    QVERIFY(!QFileInfo::exists(folder));
}

void ZipPackerTest::namesNestedFilesByTheirPathsOnly()
{
    ScratchFolder scratch;
    scratch.folder(text("in/empty/deeper"));
    scratch.file(text("in/a/b/c/d.txt"), "d");
    const QString zip = scratch.path(text("a.zip"));
    DebugCapture output;
    zipFolder(scratch.path(text("in")), zip);
    QCOMPARE(zipEntryNames(zip), QStringList(text("a/b/c/d.txt")));
    QVERIFY(!QFileInfo::exists(scratch.path(text("in"))));
}

void ZipPackerTest::walksByNameWithoutRegardToCase()
{
    ScratchFolder scratch;
    for (const char *name : {"in/b.txt", "in/A.txt", "in/C.txt", "in/aa/x.txt"})
        scratch.file(text(name), "x");
    const QString zip = scratch.path(text("a.zip"));
    DebugCapture output;
    zipFolder(scratch.path(text("in")), zip);
    QCOMPARE(zipEntryNames(zip),
             QStringList({text("A.txt"), text("aa/x.txt"), text("b.txt"), text("C.txt")}));
}

void ZipPackerTest::printsEachEntryItsFolderAndTheRoot()
{
    ScratchFolder scratch;
    scratch.file(text("in/sub/a.txt"), "a");
    scratch.file(text("in/z.txt"), "z");
    const QString root = scratch.path(text("in"));
    DebugCapture output;
    zipFolder(root, scratch.path(text("a.zip")));
    QCOMPARE(output.lines(), QStringList({text("\"sub/a.txt\" \"%1/sub\" \"%1\"").arg(root),
                                          text("\"z.txt\" \"%1\" \"%1\"").arg(root)}));
}

void ZipPackerTest::makesAnEmptyZipOfAnEmptyFolder()
{
    ScratchFolder scratch;
    const QString folder = scratch.folder(text("in"));
    const QString zip = scratch.path(text("a.zip"));
    QVERIFY(zipFolder(folder, zip));
    QCOMPARE(zipContents(zip), Contents());
    QVERIFY(!QFileInfo::exists(folder));
}

void ZipPackerTest::leavesAHiddenFileAndWithItTheFolder()
{
    ScratchFolder scratch;
    scratch.file(text("in/.hidden"), "secret");
    scratch.file(text("in/seen"), "x");
    const QString zip = scratch.path(text("a.zip"));
    DebugCapture output;
    QVERIFY(zipFolder(scratch.path(text("in")), zip));
    QCOMPARE(zipEntryNames(zip), QStringList(text("seen")));
    QCOMPARE(scratch.read(text("in/.hidden")), QByteArray("secret"));
    QVERIFY(!QFileInfo::exists(scratch.path(text("in/seen"))));
    QVERIFY(!removeFolder(scratch.path(text("in"))));
}

void ZipPackerTest::overwritesAZipThatIsThere()
{
    ScratchFolder scratch;
    const QString zip = scratch.file(text("a.zip"), QByteArray(5000, 'x'));
    scratch.file(text("in/new"), "new");
    DebugCapture output;
    zipFolder(scratch.path(text("in")), zip);
    QCOMPARE(zipContents(zip), (Contents{{text("new"), "new"}}));
}

void ZipPackerTest::removesTheFolderEvenWhenTheZipCannotBeWritten()
{
    ScratchFolder scratch;
    scratch.file(text("in/x"), "x");
    DebugCapture output;
    QVERIFY(zipFolder(scratch.path(text("in")), scratch.path(text("missing/a.zip"))));
    QVERIFY(!QFileInfo::exists(scratch.path(text("missing"))));
    QVERIFY(!QFileInfo::exists(scratch.path(text("in"))));
    QVERIFY(output.contains(text("cannot write zip")));
}

void ZipPackerTest::removesFilesWhoseNamesMeanSomethingToQt()
{
    ScratchFolder scratch;
    const QString name = text(":a.log"); // as a bare name, a resource path
    const QString folder = scratch.folder(text("in"));
    QFile file(folder + QLatin1Char('/') + name);
    if (!file.open(QIODevice::WriteOnly) || !QDir(folder).entryList().contains(name))
        QSKIP("no file can have such a name here");
    file.close();
    const QString zip = scratch.path(text("a.zip"));
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
        QVERIFY(QFile::setPermissions(scratch.file(text(name), "x"), QFileDevice::ReadOwner));
    const QString zip = scratch.path(text("a.zip"));
    DebugCapture output;
    QVERIFY(zipFolder(scratch.path(text("in")), zip));
    QCOMPARE(zipEntryNames(zip), QStringList({text("a.log"), text("sub/b.log")}));
    QVERIFY(!QFileInfo::exists(scratch.path(text("in"))));
    QVERIFY(!output.contains(text("folder not removed")));
}

void ZipPackerTest::printsAnEntryOnceItWasAdded()
{
    if (!OrdinaryUser::available())
        QSKIP("this system cannot take away the right to read");
    ScratchFolder scratch;
    const QString locked = scratch.file(text("in/a.log"), "secret");
    QVERIFY(QFile::setPermissions(locked, QFileDevice::Permissions()));
    QVERIFY(QFile::setPermissions(scratch.path(), Everybody::mayDoAll));
    QVERIFY(QFile::setPermissions(scratch.path(text("in")), Everybody::mayDoAll));
    DebugCapture output;
    {
        const OrdinaryUser user;
        QVERIFY(zipFolder(scratch.path(text("in")), scratch.path(text("a.zip"))));
    }
    // Read errors come first.
    QCOMPARE(output.lines().size(), 2);
    QVERIFY(output.lines().first().startsWith(text("cannot read \"%1\"").arg(locked)));
    QCOMPARE(output.lines().last(), text("\"a.log\" \"%1\" \"%1\"").arg(scratch.path(text("in"))));
}

void ZipPackerTest::followsNoLinkOutOfTheFolder()
{
    ScratchFolder scratch;
    scratch.file(text("precious/data"), "keep me");
    scratch.file(text("in/x"), "x");
    if (!makeLink(scratch.path(text("precious")), scratch.path(text("in/way out"))) ||
        !makeLink(scratch.path(text("in")), scratch.path(text("in/circle"))))
        QSKIP("this system makes no links for us");
    const QString zip = scratch.path(text("a.zip"));
    DebugCapture output;
    QVERIFY(zipFolder(scratch.path(text("in")), zip));
    QCOMPARE(zipEntryNames(zip), QStringList(text("x")));
    QCOMPARE(scratch.read(text("precious/data")), QByteArray("keep me"));
    QVERIFY(!QFileInfo::exists(scratch.path(text("in"))));
}

void ZipPackerTest::packsAndKeepsWhatCannotBeRemovedAndLogsIt()
{
    if (!OrdinaryUser::available())
        QSKIP("this system cannot take away the right to write");
    ScratchFolder scratch;
    scratch.file(text("in/locked/a.log"), "a");
    const QString folder = scratch.path(text("in"));
    const QString zip = scratch.path(text("a.zip"));
    for (const char *locked : {"in/locked", "in"})
        QVERIFY(QFile::setPermissions(scratch.path(text(locked)), Everybody::mayReadAndEnter));
    QVERIFY(QFile::setPermissions(scratch.path(), Everybody::mayDoAll));
    DebugCapture output;
    {
        const OrdinaryUser user;
        QVERIFY(zipFolder(folder, zip));
    }
    QCOMPARE(zipContents(zip), (Contents{{text("locked/a.log"), "a"}}));
    QCOMPARE(scratch.read(text("in/locked/a.log")), QByteArray("a"));
    QCOMPARE(output.lines().last(), text("folder not removed: \"%1\"").arg(folder));
    // So that the scratch folder can be removed.
    for (const char *locked : {"in", "in/locked"})
        QFile::setPermissions(scratch.path(text(locked)), Everybody::mayDoAll);
}

void ZipPackerTest::refusesToRemoveAnEmptyPath()
{
    QVERIFY(!removeFolder(QString()));
}

void ZipPackerTest::treatsAMissingFolderAsRemoved()
{
    ScratchFolder scratch;
    QVERIFY(removeFolder(scratch.path(text("nothing here"))));
}

void ZipPackerTest::namesEntriesAlikeForARootThatEndsInASlash_data()
{
    QTest::addColumn<QString>("end");
    for (const char *end : {"", "/", "//"})
        QTest::addRow("\"%s\"", end) << text(end);
}

void ZipPackerTest::namesEntriesAlikeForARootThatEndsInASlash()
{
    QFETCH(QString, end);
    ScratchFolder scratch;
    scratch.file(text("in/abc.txt"), "abc");
    scratch.file(text("in/sub/def.txt"), "def");
    const QString zip = scratch.path(text("a.zip"));
    const DebugCapture output;
    QVERIFY(zipFolder(scratch.path(text("in")) + end, zip));
    QCOMPARE(zipEntryNames(zip), QStringList({text("abc.txt"), text("sub/def.txt")}));
    QVERIFY(!QFileInfo::exists(scratch.path(text("in"))));
}

void ZipPackerTest::removesTheFolderBeforeItClosesTheZip()
{
    if (!FileSizeLimit::available())
        QSKIP("this system cannot limit the size of files");
    ScratchFolder scratch;
    const QString folder = scratch.path(text("in"));
    scratch.file(text("in/x"), "x");
    scratch.file(text("in/.hidden"));
    const QString zip = scratch.path(text("a.zip"));
    const DebugCapture output;
    {
        const FileSizeLimit limit(40); // enough for the file, not for the zip's directory
        QVERIFY(zipFolder(folder, zip));
    }
    QVERIFY(!QFileInfo::exists(zip));
    const QStringList lines = output.lines();
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.at(0), text("\"x\" \"%1\" \"%1\"").arg(folder));
    QCOMPARE(lines.at(1), text("folder not removed: \"%1\"").arg(folder));
    QVERIFY(lines.at(2).startsWith(text("zip not written: \"%1\"").arg(zip)));
}

QTEST_GUILESS_MAIN(ZipPackerTest)
#include "tst_zip_packer.moc"

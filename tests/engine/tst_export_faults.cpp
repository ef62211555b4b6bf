#include "Diagnostics.h"
#include "ExportFixture.h"
#include "Faults.h"
#include "Machine.h"
#include "Text.h"

#include <QFile>
#include <QProcess>

#include <cerrno>

/// Faults during an export. After each one the next export is complete.
class ExportFaults : public QObject
{
    Q_OBJECT

private slots:
    void survivesAZipPathThatCannotBeWritten();
    void survivesAZipPathThatIsAFolder();
    void leavesOutALogThatVanished();
    void leavesOutALogThatCannotBeRead();
    void leavesOutAGenTlLogThatCannotBeRead();
    void leavesOutALogThatHasBecomeAPipe();
    void leavesOutALogThatHasBecomeADevice();
    void survivesASourceFolderThatWasRemoved();
    void leavesOutGenTlLogsWhoseFolderCannotBeMade();
    void packsWhatAKilledRunLeftInTheStagingFolder();
    void takesPathsOfEveryKind_data();
    void takesPathsOfEveryKind();
    void survivesAFullDiskWhileStaging();
    void leavesNoHalfZipWhenTheDiskFillsWhilePacking();

private:
    const Diagnostics diagnostics;
};

namespace {

/// Checks that the worker still works.
void exportsOnceMore(ExportFixture &f)
{
    const QString zip = f.scratch.path(text("once more.zip"));
    f.choose({f.log(text("after.log"), "after\n")});
    f.worker.enqueueExport(zip);
    QVERIFY(f.waitForExports());
    QCOMPARE(zipContents(zip).value(text("SDKLOG/after.log")), QByteArray("after\n"));
    QVERIFY(!QFileInfo::exists(f.staging()));
}

} // namespace

void ExportFaults::survivesAZipPathThatCannotBeWritten()
{
    ExportFixture f;
    const QString zip = f.scratch.path(text("no such folder/a.zip"));
    f.choose({f.log(text("a.log"))});
    f.worker.enqueueExport(zip);
    QVERIFY(f.waitForExports());
    QVERIFY(!QFileInfo::exists(zip));
    QVERIFY(!QFileInfo::exists(f.staging()));
    QVERIFY(f.output.contains(text("cannot write zip \"%1\"").arg(zip)));
    exportsOnceMore(f);
}

void ExportFaults::survivesAZipPathThatIsAFolder()
{
    ExportFixture f;
    const QString zip = f.scratch.folder(text("folder.zip"));
    f.choose({f.log(text("a.log"))});
    f.worker.enqueueExport(zip);
    QVERIFY(f.waitForExports());
    QVERIFY(QFileInfo(zip).isDir());
    QVERIFY(f.output.contains(text("cannot write zip \"%1\"").arg(zip)));
    exportsOnceMore(f);
}

void ExportFaults::leavesOutALogThatVanished()
{
    ExportFixture f;
    const QString gone = f.log(text("gone.log"));
    f.choose({f.log(text("a.log")), gone, f.log(text("b.log"))});
    QVERIFY(QFile::remove(gone));
    QVERIFY(f.exportAndWait());
    QCOMPARE(zipEntryNames(f.zip()), QStringList({text("SDKLOG/a.log"), text("SDKLOG/b.log")}));
    QCOMPARE(f.output.lines().at(0), text("true"));
    QVERIFY(f.output.lines().at(1).startsWith(text("not copied: \"%1\"").arg(gone)));
    QCOMPARE(f.output.lines().mid(2, 2), QStringList({text("false"), text("true")}));
    exportsOnceMore(f);
}

void ExportFaults::leavesOutALogThatCannotBeRead()
{
    if (!OrdinaryUser::available())
        QSKIP("this system cannot take away the right to read");
    ExportFixture f;
    const QString locked = f.log(text("locked.log"), "secret\n");
    QVERIFY(QFile::setPermissions(locked, QFileDevice::Permissions()));
    QVERIFY(QFile::setPermissions(f.scratch.path(), Everybody::mayDoAll));
    QVERIFY(QFile::setPermissions(f.base(), Everybody::mayDoAll));
    f.choose({locked, f.log(text("a.log"))});
    {
        const OrdinaryUser user;
        QVERIFY(f.exportAndWait());
    }
    QCOMPARE(zipEntryNames(f.zip()), QStringList(text("SDKLOG/a.log")));
    QVERIFY(f.output.lines().at(0).startsWith(text("not copied: \"%1\"").arg(locked)));
    QCOMPARE(f.output.lines().at(1), text("false"));
    exportsOnceMore(f);
}

void ExportFaults::leavesOutAGenTlLogThatCannotBeRead()
{
    if (!OrdinaryUser::available())
        QSKIP("this system cannot take away the right to read");
    ExportFixture f;
    const QString locked = f.log(text("gentl_cxp_log/locked.txt"), "secret\n");
    f.log(text("gentl_cxp_log/open.txt"), "open\n");
    QVERIFY(QFile::setPermissions(locked, QFileDevice::Permissions()));
    QVERIFY(QFile::setPermissions(f.scratch.path(), Everybody::mayDoAll));
    QVERIFY(QFile::setPermissions(f.base(), Everybody::mayDoAll));
    {
        const OrdinaryUser user;
        QVERIFY(f.exportAndWait());
    }
    QCOMPARE(zipEntryNames(f.zip()), QStringList(text("SDKLOG/gentl_cxp_log/open.txt")));
    // These copies print no result; failures are logged.
    QVERIFY(f.output.lines().at(0).startsWith(text("not copied: \"%1\"").arg(locked)));
    QVERIFY(!f.output.lines().contains(text("false")));
    exportsOnceMore(f);
}

void ExportFaults::leavesOutALogThatHasBecomeAPipe()
{
    ExportFixture f;
    const QString pipe = f.scratch.path(text("QZSDK/QZviewer/pipe.log"));
    if (QProcess::execute(text("mkfifo"), {pipe}) != 0)
        QSKIP("no pipes among files here");
    QVERIFY(f.exportAndWait({pipe, f.log(text("a.log"))})); // the pipe never has a writer
    QCOMPARE(zipEntryNames(f.zip()), QStringList(text("SDKLOG/a.log")));
    QCOMPARE(f.output.lines().mid(0, 3),
             QStringList({text("not copied: \"%1\" \"not a regular file\"").arg(pipe),
                          text("false"), text("true")}));
    exportsOnceMore(f);
}

void ExportFaults::leavesOutALogThatHasBecomeADevice()
{
    ExportFixture f;
    const QString device = f.scratch.path(text("QZSDK/QZviewer/device.log"));
    if (onWindows() || !makeLink(text("/dev/null"), device))
        QSKIP("no devices among files here");
    QVERIFY(f.exportAndWait({device, f.log(text("a.log"))}));
    QCOMPARE(zipEntryNames(f.zip()), QStringList(text("SDKLOG/a.log")));
    QCOMPARE(f.output.lines().mid(0, 3),
             QStringList({text("not copied: \"%1\" \"not a regular file\"").arg(device),
                          text("false"), text("true")}));
    exportsOnceMore(f);
}

void ExportFaults::survivesASourceFolderThatWasRemoved()
{
    ExportFixture f;
    const QString log = f.log(text("a.log"));
    f.choose({log});
    QVERIFY(QDir(f.base() + text("QZviewer")).removeRecursively());
    QVERIFY(f.exportAndWait());
    QCOMPARE(zipEntryNames(f.zip()), QStringList());
    QVERIFY(f.output.contains(text("not copied: \"%1\"").arg(log)));
    exportsOnceMore(f);
}

void ExportFaults::leavesOutGenTlLogsWhoseFolderCannotBeMade()
{
    ExportFixture f;
    f.log(text("gentl_cxp_log/g.txt"));
    const QString inItsPlace = f.scratch.file(text("elsewhere/gentl_cxp_log"), "a log");
    QVERIFY(f.exportAndWait({inItsPlace}));
    QCOMPARE(zipContents(f.zip()),
             (ExportFixture::Contents{{text("SDKLOG/gentl_cxp_log"), "a log"}}));
    const QString source = f.base() + text("QZviewer/gentl_cxp_log");
    QVERIFY(f.output.contains(text("not copied: \"%1\"").arg(source)));
    exportsOnceMore(f);
}

void ExportFaults::packsWhatAKilledRunLeftInTheStagingFolder()
{
    ExportFixture f;
    f.scratch.file(text("QZSDK/LogInfo/SDKLOG/old.log"), "of the killed run\n");
    f.scratch.file(text("QZSDK/LogInfo/NICInfo.txt"), "likewise\n");
    QVERIFY(f.exportAndWait({f.log(text("a.log"))}));
    QCOMPARE(zipEntryNames(f.zip()),
             QStringList({text("NICInfo.txt"), text("SDKLOG/a.log"), text("SDKLOG/old.log")}));
    QVERIFY(f.output.lines().contains(
        text("staging folder left by an earlier run: \"%1\"").arg(f.staging())));
    QVERIFY(!QFileInfo::exists(f.staging()));
    exportsOnceMore(f);
}

void ExportFaults::takesPathsOfEveryKind_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << text("with blanks and  two");
    QTest::newRow("percent signs") << text("100%20 %1 %s");
    QTest::newRow("Chinese") << text("相机日志");
    QTest::newRow("emoji") << text("📷 camera 🔥");
    if (onWindows()) // does not allow these characters
        return;
    QTest::newRow("quotes") << text("it's \"quoted\"");
    QTest::newRow("backslash") << text("back\\slash");
}

void ExportFaults::takesPathsOfEveryKind()
{
    QFETCH(QString, name);
    ExportFixture f;
    const QString base = f.scratch.folder(name) + QLatin1Char('/');
    f.worker.setBasePath(base);
    f.worker.setLogSourceFolder(name);
    const QString log = f.scratch.file(
        name + QLatin1Char('/') + name + QLatin1Char('/') + name + text(".log"), "line\n");
    f.scratch.file(name + QLatin1Char('/') + name + text("/gentl_cxp_log/") + name, "gentl\n");
    f.choose({log});
    const QString zip = base + name + text(".zip");
    f.worker.enqueueExport(zip);
    QVERIFY(f.waitForExports());
    QCOMPARE(zipContents(zip),
             (ExportFixture::Contents{{text("SDKLOG/") + name + text(".log"), "line\n"},
                                      {text("SDKLOG/gentl_cxp_log/") + name, "gentl\n"}}));
}

void ExportFaults::survivesAFullDiskWhileStaging()
{
    if (!FileSizeLimit::available())
        QSKIP("this system cannot limit the size of files");
    ExportFixture f;
    const QString large = f.log(text("large.log"), QByteArray(200000, 'x'));
    f.choose({f.log(text("a.log")), large, f.log(text("b.log"))});
    {
        const FileSizeLimit limit(100000);
        QVERIFY(f.exportAndWait());
    }
    // Only logs that fit are saved; incomplete ones are dropped.
    QCOMPARE(zipEntryNames(f.zip()), QStringList({text("SDKLOG/a.log"), text("SDKLOG/b.log")}));
    QVERIFY(f.output.lines().at(1).startsWith(text("not copied: \"%1\"").arg(large)));
    QCOMPARE(f.output.lines().at(2), text("false"));
    exportsOnceMore(f);
}

void ExportFaults::leavesNoHalfZipWhenTheDiskFillsWhilePacking()
{
    if (!FileSizeLimit::available())
        QSKIP("this system cannot limit the size of files");
    ExportFixture f;
    QStringList logs;
    for (int i = 0; i < 40; ++i)
        logs.append(f.log(text("%1.log").arg(i), QByteArray(10, char('a' + i % 26))));
    f.choose(logs);
    {
        // Each log fits, the zip of all logs does not.
        const FileSizeLimit limit(2000);
        QVERIFY(f.exportAndWait());
    }
    QVERIFY(!QFileInfo::exists(f.zip()));
    QVERIFY(!QFileInfo::exists(f.staging()));
    QVERIFY(f.output.contains(
        text("zip not written: \"%1\" \"%2\"").arg(f.zip(), qt_error_string(EFBIG))));
    exportsOnceMore(f);
}

QTEST_GUILESS_MAIN(ExportFaults)
#include "tst_export_faults.moc"

#include "Diagnostics.h"
#include "ExportFixture.h"
#include "Faults.h"
#include "Machine.h"

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
    const QString zip = f.scratch.path("once more.zip");
    f.choose({f.log("after.log", "after\n")});
    f.worker.enqueueExport(zip);
    QVERIFY(f.waitForExports());
    QCOMPARE(zipContents(zip).value("SDKLOG/after.log"), QByteArray("after\n"));
    QVERIFY(!QFileInfo::exists(f.staging()));
}

} // namespace

void ExportFaults::survivesAZipPathThatCannotBeWritten()
{
    ExportFixture f;
    const QString zip = f.scratch.path("no such folder/a.zip");
    f.choose({f.log("a.log")});
    f.worker.enqueueExport(zip);
    QVERIFY(f.waitForExports());
    QVERIFY(!QFileInfo::exists(zip));
    QVERIFY(!QFileInfo::exists(f.staging()));
    QVERIFY(f.output.contains(QString("cannot write zip \"%1\"").arg(zip)));
    exportsOnceMore(f);
}

void ExportFaults::survivesAZipPathThatIsAFolder()
{
    ExportFixture f;
    const QString zip = f.scratch.folder("folder.zip");
    f.choose({f.log("a.log")});
    f.worker.enqueueExport(zip);
    QVERIFY(f.waitForExports());
    QVERIFY(QFileInfo(zip).isDir());
    QVERIFY(f.output.contains(QString("cannot write zip \"%1\"").arg(zip)));
    exportsOnceMore(f);
}

void ExportFaults::leavesOutALogThatVanished()
{
    ExportFixture f;
    const QString gone = f.log("gone.log");
    f.choose({f.log("a.log"), gone, f.log("b.log")});
    QVERIFY(QFile::remove(gone));
    QVERIFY(f.exportAndWait());
    QCOMPARE(zipEntryNames(f.zip()), QStringList({"SDKLOG/a.log", "SDKLOG/b.log"}));
    QCOMPARE(f.output.lines().at(0), "true");
    QVERIFY(f.output.lines().at(1).startsWith(QString("not copied: \"%1\"").arg(gone)));
    QCOMPARE(f.output.lines().mid(2, 2), QStringList({"false", "true"}));
    exportsOnceMore(f);
}

void ExportFaults::leavesOutALogThatCannotBeRead()
{
    if (!OrdinaryUser::available())
        QSKIP("read permission cannot be revoked on this system");
    ExportFixture f;
    const QString locked = f.log("locked.log", "secret\n");
    QVERIFY(QFile::setPermissions(locked, QFileDevice::Permissions()));
    QVERIFY(QFile::setPermissions(f.scratch.path(), Everybody::mayDoAll));
    QVERIFY(QFile::setPermissions(f.base(), Everybody::mayDoAll));
    f.choose({locked, f.log("a.log")});
    {
        const OrdinaryUser user;
        QVERIFY(f.exportAndWait());
    }
    QCOMPARE(zipEntryNames(f.zip()), QStringList("SDKLOG/a.log"));
    QVERIFY(f.output.lines().at(0).startsWith(QString("not copied: \"%1\"").arg(locked)));
    QCOMPARE(f.output.lines().at(1), "false");
    exportsOnceMore(f);
}

void ExportFaults::leavesOutAGenTlLogThatCannotBeRead()
{
    if (!OrdinaryUser::available())
        QSKIP("read permission cannot be revoked on this system");
    ExportFixture f;
    const QString locked = f.log("gentl_cxp_log/locked.txt", "secret\n");
    f.log("gentl_cxp_log/open.txt", "open\n");
    QVERIFY(QFile::setPermissions(locked, QFileDevice::Permissions()));
    QVERIFY(QFile::setPermissions(f.scratch.path(), Everybody::mayDoAll));
    QVERIFY(QFile::setPermissions(f.base(), Everybody::mayDoAll));
    {
        const OrdinaryUser user;
        QVERIFY(f.exportAndWait());
    }
    QCOMPARE(zipEntryNames(f.zip()), QStringList("SDKLOG/gentl_cxp_log/open.txt"));
    // These copies print no result; failures are logged.
    QVERIFY(f.output.lines().at(0).startsWith(QString("not copied: \"%1\"").arg(locked)));
    QVERIFY(!f.output.lines().contains("false"));
    exportsOnceMore(f);
}

void ExportFaults::leavesOutALogThatHasBecomeAPipe()
{
    ExportFixture f;
    const QString pipe = f.scratch.path("QZSDK/QZviewer/pipe.log");
    if (QProcess::execute("mkfifo", {pipe}) != 0)
        QSKIP("there are no named pipes in folders on this system");
    QVERIFY(f.exportAndWait({pipe, f.log("a.log")})); // the pipe never has a writer
    QCOMPARE(zipEntryNames(f.zip()), QStringList("SDKLOG/a.log"));
    QCOMPARE(f.output.lines().mid(0, 3),
             QStringList({QString("not copied: \"%1\" \"not a regular file\"").arg(pipe), "false",
                          "true"}));
    exportsOnceMore(f);
}

void ExportFaults::leavesOutALogThatHasBecomeADevice()
{
    ExportFixture f;
    const QString device = f.scratch.path("QZSDK/QZviewer/device.log");
    if (onWindows() || !makeLink("/dev/null", device))
        QSKIP("there are no device files on this system");
    QVERIFY(f.exportAndWait({device, f.log("a.log")}));
    QCOMPARE(zipEntryNames(f.zip()), QStringList("SDKLOG/a.log"));
    QCOMPARE(f.output.lines().mid(0, 3),
             QStringList({QString("not copied: \"%1\" \"not a regular file\"").arg(device), "false",
                          "true"}));
    exportsOnceMore(f);
}

void ExportFaults::survivesASourceFolderThatWasRemoved()
{
    ExportFixture f;
    const QString log = f.log("a.log");
    f.choose({log});
    QVERIFY(QDir(f.base() + "QZviewer").removeRecursively());
    QVERIFY(f.exportAndWait());
    QCOMPARE(zipContents(f.zip()), ExportFixture::Contents());
    QVERIFY(f.output.contains(QString("not copied: \"%1\"").arg(log)));
    exportsOnceMore(f);
}

void ExportFaults::leavesOutGenTlLogsWhoseFolderCannotBeMade()
{
    ExportFixture f;
    f.log("gentl_cxp_log/g.txt");
    const QString inItsPlace = f.scratch.file("elsewhere/gentl_cxp_log", "a log");
    QVERIFY(f.exportAndWait({inItsPlace}));
    QCOMPARE(zipContents(f.zip()), (ExportFixture::Contents{{"SDKLOG/gentl_cxp_log", "a log"}}));
    const QString source = f.base() + "QZviewer/gentl_cxp_log";
    QVERIFY(f.output.contains(QString("not copied: \"%1\"").arg(source)));
    exportsOnceMore(f);
}

void ExportFaults::packsWhatAKilledRunLeftInTheStagingFolder()
{
    ExportFixture f;
    f.scratch.file("QZSDK/LogInfo/SDKLOG/old.log", "of the killed run\n");
    f.scratch.file("QZSDK/LogInfo/NICInfo.txt", "likewise\n");
    QVERIFY(f.exportAndWait({f.log("a.log")}));
    QCOMPARE(zipEntryNames(f.zip()),
             QStringList({"NICInfo.txt", "SDKLOG/a.log", "SDKLOG/old.log"}));
    QVERIFY(f.output.lines().contains(
        QString("staging folder left by an earlier run: \"%1\"").arg(f.staging())));
    QVERIFY(!QFileInfo::exists(f.staging()));
    exportsOnceMore(f);
}

void ExportFaults::takesPathsOfEveryKind_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << "with blanks and  two";
    QTest::newRow("percent signs") << "100%20 %1 %s";
    QTest::newRow("Chinese") << "相机日志";
    QTest::newRow("emoji") << "📷 camera 🔥";
    if (onWindows()) // does not allow these characters
        return;
    QTest::newRow("quotes") << "it's \"quoted\"";
    QTest::newRow("backslash") << "back\\slash";
}

void ExportFaults::takesPathsOfEveryKind()
{
    QFETCH(QString, name);
    ExportFixture f;
    const QString base = f.scratch.folder(name) + '/';
    f.worker.setBasePath(base);
    f.worker.setLogSourceFolder(name);
    const QString log = f.scratch.file(name + '/' + name + '/' + name + ".log", "line\n");
    f.scratch.file(name + '/' + name + "/gentl_cxp_log/" + name, "gentl\n");
    f.choose({log});
    const QString zip = base + name + ".zip";
    f.worker.enqueueExport(zip);
    QVERIFY(f.waitForExports());
    QCOMPARE(zipContents(zip),
             (ExportFixture::Contents{{"SDKLOG/" + name + ".log", "line\n"},
                                      {"SDKLOG/gentl_cxp_log/" + name, "gentl\n"}}));
}

void ExportFaults::survivesAFullDiskWhileStaging()
{
    if (!FileSizeLimit::available())
        QSKIP("this system cannot limit the size of files");
    ExportFixture f;
    const QString large = f.log("large.log", QByteArray(200000, 'x'));
    f.choose({f.log("a.log"), large, f.log("b.log")});
    {
        const FileSizeLimit limit(100000);
        QVERIFY(f.exportAndWait());
    }
    // Only logs that fit are saved; incomplete ones are dropped.
    QCOMPARE(zipEntryNames(f.zip()), QStringList({"SDKLOG/a.log", "SDKLOG/b.log"}));
    QVERIFY(f.output.lines().at(1).startsWith(QString("not copied: \"%1\"").arg(large)));
    QCOMPARE(f.output.lines().at(2), "false");
    exportsOnceMore(f);
}

void ExportFaults::leavesNoHalfZipWhenTheDiskFillsWhilePacking()
{
    if (!FileSizeLimit::available())
        QSKIP("this system cannot limit the size of files");
    ExportFixture f;
    QStringList logs;
    for (int i = 0; i < 40; ++i)
        logs.append(f.log(QString("%1.log").arg(i), QByteArray(10, char('a' + i % 26))));
    f.choose(logs);
    {
        // Each log fits, the zip of all logs does not.
        const FileSizeLimit limit(2000);
        QVERIFY(f.exportAndWait());
    }
    QVERIFY(!QFileInfo::exists(f.zip()));
    QVERIFY(!QFileInfo::exists(f.staging()));
    QVERIFY(f.output.contains(
        QString("zip not written: \"%1\" \"%2\"").arg(f.zip(), qt_error_string(EFBIG))));
    exportsOnceMore(f);
}

QTEST_GUILESS_MAIN(ExportFaults)
#include "tst_export_faults.moc"

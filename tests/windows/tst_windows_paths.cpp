#include "ExportFixture.h"

#include "LineSearch.h"
#include "SharedFile.h"

#include <windows.h>

/// Paths that are special on Windows.
class WindowsPaths : public QObject
{
    Q_OBJECT

private slots:
    void exportsWhereFoldersHaveChineseNames();
    void exportsToABackslashedPathWithADrive();
    void exportsAPathBeyond260Characters();
    void readsAPathBeyond260Characters();
    void searchesThroughFindstr_data();
    void searchesThroughFindstr();
};

namespace {

/// Longer than Windows' traditional limit.
QString longFolder()
{
    return (QString(50, 'x') + '/').repeated(6);
}

} // namespace

void WindowsPaths::exportsWhereFoldersHaveChineseNames()
{
    ExportFixture f;
    f.scratch.folder("用户 张三/QZSDK/QZviewer");
    const QString log = f.scratch.file("用户 张三/QZSDK/QZviewer/日志.log", "line\n");
    f.worker.setBasePath(f.scratch.path("用户 张三/QZSDK/"));
    f.worker.setLogSourceFolder("QZviewer");
    hub().nicInfo = true;
    hub().systemInfo = true;
    f.choose({log});
    const QString zip = f.scratch.path("用户 张三/导出.zip");
    f.worker.enqueueExport(zip);
    QVERIFY(f.waitForExports());
    const ExportFixture::Contents contents = zipContents(zip);
    QCOMPARE(contents.value("SDKLOG/日志.log"), QByteArray("line\n"));
    QVERIFY(contents.value("NICInfo.txt").startsWith("Adapter: "));
    QVERIFY(contents.value("SystemInfo.txt").startsWith("Memory Load: "));
}

void WindowsPaths::exportsToABackslashedPathWithADrive()
{
    ExportFixture f;
    f.choose({f.log("a.log")});
    const QString zip = QDir::toNativeSeparators(f.zip());
    QVERIFY2(zip.mid(1, 2) == ":\\", qPrintable(zip));
    f.worker.enqueueExport(zip);
    QVERIFY(f.waitForExports());
    QVERIFY(zipContents(f.zip()).contains("SDKLOG/a.log"));
}

void WindowsPaths::exportsAPathBeyond260Characters()
{
    ExportFixture f;
    f.scratch.folder(longFolder());
    const QString zip = f.scratch.path(longFolder() + "out.zip");
    QVERIFY(zip.size() > MAX_PATH);
    f.choose({f.log("a.log")});
    f.worker.enqueueExport(zip);
    QVERIFY(f.waitForExports());
    QVERIFY(zipContents(zip).contains("SDKLOG/a.log"));
}

void WindowsPaths::readsAPathBeyond260Characters()
{
    ScratchFolder scratch;
    QFile file(scratch.file(longFolder() + "a.log", "one\r\ntwo\r\n"));
    QVERIFY(file.fileName().size() > MAX_PATH);
    QVERIFY(openShared(file));
    QCOMPARE(file.readAll(), QByteArray("one\r\ntwo\r\n"));
}

void WindowsPaths::searchesThroughFindstr_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("found");
    QTest::newRow("a path without blanks") << "logs/a.log" << QByteArray("three\n");
    QTest::newRow("finds nothing in a path with a blank") << "my logs/a.log" << QByteArray();
}

void WindowsPaths::searchesThroughFindstr()
{
    QFETCH(QString, name);
    ScratchFolder scratch;
    const QString path = scratch.file(name, "one\r\ntwo\r\nthree\r\n");
    QByteArray found;
    QVERIFY(systemLineSearch("t.*e", path, [&found](const char *piece) { found += piece; }));
    QTEST(found, "found");
}

QTEST_GUILESS_MAIN(WindowsPaths)
#include "tst_windows_paths.moc"

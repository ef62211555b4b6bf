#include "ExportFixture.h"

#include "NetworkAdapters.h"

#include <QRegularExpression>

/// The reports with this machine's real data.
class WindowsReports : public QObject
{
    Q_OBJECT

private slots:
    void everyAdapterHasItsBlock();
    void memoryIsReportedInMegabytes();
    void missingPropertiesOfModulesAreHandled();
    void eventLogsAreExported();
    void noDumpIsNoFailure();
};

namespace {

QByteArrayList linesOf(const QByteArray &report)
{
    return report.split('\n');
}

bool matches(const QByteArray &line, const char *expression)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(expression))
        .match(QString::fromUtf8(line))
        .hasMatch();
}

} // namespace

void WindowsReports::everyAdapterHasItsBlock()
{
    ExportFixture f;
    const QString folder = f.scratch.folder("staging");
    QVERIFY(f.worker.saveNICInfo(folder));
    const QByteArray report = f.scratch.read("staging/NICInfo.txt");
    const int adapters = networkAdapters().adapters.size();
    QCOMPARE(report.count("Adapter: "), adapters);
    QCOMPARE(report.count("MTU: "), adapters);
    QCOMPARE(report.count("Status: "), adapters);
    QVERIFY(report.endsWith("\n\n"));
    QVERIFY2(!report.contains('\r'), "the report's line ends are line feeds");
}

void WindowsReports::memoryIsReportedInMegabytes()
{
    ExportFixture f;
    const QString folder = f.scratch.folder("staging");
    QVERIFY(f.worker.saveSysInfo(folder));
    const QByteArrayList lines = linesOf(f.scratch.read("staging/SystemInfo.txt"));
    QVERIFY(lines.size() >= 3);
    QVERIFY2(matches(lines[0], "Memory Load: \\d{1,3}%\\r?"), lines[0].constData());
    QVERIFY2(matches(lines[1], "Total Physical Memory: [1-9]\\d* MB\\r?"), lines[1].constData());
    QVERIFY2(matches(lines[2], "Available Physical Memory: \\d+ MB\\r?"), lines[2].constData());
}

void WindowsReports::missingPropertiesOfModulesAreHandled()
{
    ExportFixture f;
    const QString folder = f.scratch.folder("staging");
    QVERIFY(f.worker.saveSysInfo(folder));
    const QByteArray report = f.scratch.read("staging/SystemInfo.txt");
    const int modules = report.count("PartNumber: ");
    qInfo("memory modules that this system reports: %d", modules);
    QCOMPARE(report.count("Capacity: "), modules);
    QCOMPARE(report.count("Speed: "), modules);
    QCOMPARE(report.count(" Kb"), modules);
    QCOMPARE(report.count(" MHz"), modules);
}

void WindowsReports::eventLogsAreExported()
{
    ExportFixture f;
    const QString folder = f.scratch.folder("staging");
    QVERIFY(f.worker.saveEventLog(folder));
    QVERIFY(QFileInfo(folder + "/ApplicationEvents.evtx").size() > 0);
    QVERIFY(QFileInfo(folder + "/SystemEvents.evtx").size() > 0);
}

void WindowsReports::noDumpIsNoFailure()
{
    if (QFileInfo::exists("C:/Windows/MEMORY.DMP"))
        QSKIP("this system has a memory dump, which is too large for a test");
    ExportFixture f;
    const QString folder = f.scratch.folder("staging");
    QVERIFY(f.worker.saveSystemDump(folder));
    QVERIFY(f.output.contains("蓝屏日志文件Memory.dmp不存在"));
    QVERIFY(QFileInfo::exists(folder + "/SystemDmp.zip"));
}

QTEST_GUILESS_MAIN(WindowsReports)
#include "tst_windows_reports.moc"

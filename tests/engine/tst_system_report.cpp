#include "SystemReport.h"

#include "Diagnostics.h"
#include "ExportFixture.h"
#include "FakeSystem.h"

class SystemReport : public QObject
{
    Q_OBJECT

private slots:
    void memoryTakesThreeLines();
    void sizesAreWholeMebibytesRoundedDown_data();
    void sizesAreWholeMebibytesRoundedDown();
    void aModuleTakesThreeLines_data();
    void aModuleTakesThreeLines();

    void anEmptyFolderIsRefusedAndNothingIsQueried();
    void withoutModulesThereAreExactlyThreeLines();
    void modulesFollowInTheirOrder();
    void theModuleListsAreUsedUp();
    void aSecondQueryKeepsTheModulesOfTheFirst();
    void aSecondReportIsAppendedToTheFirst();
    void eachZipHoldsOneReport();
    void withoutMemoryStatusItFailsAndLeavesAnEmptyFile();
    void aFailedModuleQueryIsPrintedAndNoFailure_data();
    void aFailedModuleQueryIsPrintedAndNoFailure();
    void modulesThatCannotBeQueriedAreLoggedAndNoFailure();
    void aQueryThatBreaksReportsTheModulesBeforeAndFailsSilently();
    void withoutComSecurityTheModulesAreSilentlyNotQueried();
    void aFileThatCannotBeOpenedIsNoFailure();
    void theWorkerStoresTheTimeThenSetsTheHubThenSetsUpComSecurity();
};

namespace {

constexpr MemoryStatus memory{37, quint64(16) << 30, quint64(10) << 30};
const QByteArray memoryLines = "Memory Load: 37%\n"
                               "Total Physical Memory: 16384 MB\n"
                               "Available Physical Memory: 10240 MB\n";

} // namespace

void SystemReport::memoryTakesThreeLines()
{
    QCOMPARE(memoryReport(memory), memoryLines);
}

void SystemReport::sizesAreWholeMebibytesRoundedDown_data()
{
    QTest::addColumn<quint64>("bytes");
    QTest::addColumn<QByteArray>("shown");
    QTest::newRow("nothing") << quint64(0) << QByteArray("0 MB");
    QTest::newRow("a byte less than 1 MiB") << quint64(1048575) << QByteArray("0 MB");
    QTest::newRow("1 MiB") << quint64(1048576) << QByteArray("1 MB");
    QTest::newRow("all 64 bits") << ~quint64(0) << QByteArray("17592186044415 MB");
}

void SystemReport::sizesAreWholeMebibytesRoundedDown()
{
    QFETCH(quint64, bytes);
    QFETCH(QByteArray, shown);
    QCOMPARE(memoryReport({100, bytes, bytes}),
             "Memory Load: 100%\nTotal Physical Memory: " + shown +
                 "\nAvailable Physical Memory: " + shown + '\n');
}

void SystemReport::aModuleTakesThreeLines_data()
{
    QTest::addColumn<QByteArray>("partNumber");
    QTest::addColumn<qint32>("capacity");
    QTest::addColumn<qint32>("speed");
    QTest::addColumn<QByteArray>("lines");
    QTest::newRow("usual") << QByteArray("M471A2K43DB1-CWE") << qint32(16777216) << qint32(3200)
                           << QByteArray("PartNumber: M471A2K43DB1-CWE\nCapacity: 16777216 Kb\n"
                                         "Speed: 3200 MHz\n");
    QTest::newRow("all properties missing")
        << QByteArray() << qint32(0) << qint32(0)
        << QByteArray("PartNumber: \nCapacity: 0 Kb\nSpeed: 0 MHz\n");
    QTest::newRow("signed figures")
        << QByteArray("x") << qint32(-2147483647 - 1) << qint32(-1)
        << QByteArray("PartNumber: x\nCapacity: -2147483648 Kb\nSpeed: -1 MHz\n");
    QTest::newRow("bytes of a foreign code page, blanks kept")
        << QByteArray(" \xc4\xda\xb4\xe6 ") << qint32(1) << qint32(2)
        << QByteArray("PartNumber:  \xc4\xda\xb4\xe6 \nCapacity: 1 Kb\nSpeed: 2 MHz\n");
}

void SystemReport::aModuleTakesThreeLines()
{
    QFETCH(QByteArray, partNumber);
    QFETCH(qint32, capacity);
    QFETCH(qint32, speed);
    QTEST(moduleReport(partNumber, capacity, speed), "lines");
}

void SystemReport::anEmptyFolderIsRefusedAndNothingIsQueried()
{
    FakeSystem machine;
    ExportFixture f(machine.probes());
    machine.calledProbes.clear();
    QVERIFY(!f.worker.saveSysInfo(QString()));
    QVERIFY(!QFile::exists("/SystemInfo.txt"));
    QCOMPARE(machine.calledProbes, QStringList());
    QCOMPARE(f.output.lines(), QStringList());
}

void SystemReport::withoutModulesThereAreExactlyThreeLines()
{
    FakeSystem machine;
    machine.memory = memory;
    ExportFixture f(machine.probes());
    QVERIFY(f.worker.saveSysInfo(f.scratch.path()));
    QCOMPARE(f.scratch.read("SystemInfo.txt"), memoryLines);
    QCOMPARE(f.output.lines(), QStringList());
}

void SystemReport::modulesFollowInTheirOrder()
{
    FakeSystem machine;
    machine.memory = memory;
    QByteArray expected = memoryLines;
    for (int i = 0; i < 64; ++i) {
        const MemoryModule module{i % 3 == 0 ? QByteArray() : "part " + QByteArray::number(i),
                                  1000 * i, 2400 + i};
        machine.modules.modules.append(module);
        expected += moduleReport(module.partNumber, module.capacity, module.speed);
    }
    ExportFixture f(machine.probes());
    QVERIFY(f.worker.saveSysInfo(f.scratch.path()));
    QCOMPARE(f.scratch.read("SystemInfo.txt"), expected);
    QCOMPARE(expected.count('\n'), 3 + 3 * 64);
}

void SystemReport::theModuleListsAreUsedUp()
{
    FakeSystem machine;
    machine.modules.modules = {{"only once", 1, 2}};
    ExportFixture f(machine.probes());
    QVERIFY(f.worker.saveSysInfo(f.scratch.folder("first")));
    machine.modules.modules.clear();
    QVERIFY(f.worker.saveSysInfo(f.scratch.folder("second")));
    QVERIFY(f.scratch.read("first/SystemInfo.txt").contains("only once"));
    QVERIFY(!f.scratch.read("second/SystemInfo.txt").contains("PartNumber"));
}

void SystemReport::aSecondQueryKeepsTheModulesOfTheFirst()
{
    FakeSystem machine;
    machine.memory = memory;
    machine.modules.modules = {{"first", 1, 2}};
    ExportFixture f(machine.probes());
    QVERIFY(f.worker.queryMemoryModules());
    machine.modules.modules = {{"second", 3, 4}};
    QVERIFY(f.worker.saveSysInfo(f.scratch.path())); // queries again
    QCOMPARE(f.scratch.read("SystemInfo.txt"),
             memoryLines + moduleReport("first", 1, 2) + moduleReport("second", 3, 4));
}

void SystemReport::aSecondReportIsAppendedToTheFirst()
{
    FakeSystem machine;
    machine.memory = memory;
    ExportFixture f(machine.probes());
    QVERIFY(f.worker.saveSysInfo(f.scratch.path()));
    QVERIFY(f.worker.saveSysInfo(f.scratch.path()));
    QCOMPARE(f.scratch.read("SystemInfo.txt"), memoryLines + memoryLines);
}

void SystemReport::eachZipHoldsOneReport()
{
    FakeSystem machine;
    machine.memory = memory;
    ExportFixture f(machine.probes());
    hub().systemInfo = true;
    for (int i = 0; i < 2; ++i) {
        QVERIFY(f.exportAndWait());
        QCOMPARE(zipContents(f.zip()), (ExportFixture::Contents{{"SystemInfo.txt", memoryLines}}));
    }
}

void SystemReport::withoutMemoryStatusItFailsAndLeavesAnEmptyFile()
{
    FakeSystem machine;
    machine.memory = {};
    machine.modules.modules = {{"not asked for", 1, 2}};
    ExportFixture f(machine.probes());
    QVERIFY(!f.worker.saveSysInfo(f.scratch.path()));
    QCOMPARE(f.output.lines(), QStringList("Failed to get memory status."));
    QCOMPARE(f.scratch.read("SystemInfo.txt"), QByteArray());
    QVERIFY(!machine.calledProbes.contains("memoryModules"));
}

void SystemReport::aFailedModuleQueryIsPrintedAndNoFailure_data()
{
    using Query = MemoryModuleList::Query;
    QTest::addColumn<int>("query");
    QTest::addColumn<QString>("printed");
    QTest::newRow("library") << int(Query::Library) << "COM库初始化失败";
    QTest::newRow("locator") << int(Query::Locator) << "WbemLocator创建失败";
    QTest::newRow("connection") << int(Query::Connection) << "WMI服务连接失败";
    QTest::newRow("proxy") << int(Query::Proxy) << "设置代理失败";
    QTest::newRow("execution") << int(Query::Execution) << "查询执行失败";
}

void SystemReport::aFailedModuleQueryIsPrintedAndNoFailure()
{
    QFETCH(int, query);
    QFETCH(QString, printed);
    FakeSystem machine;
    machine.memory = memory;
    machine.modules.query = MemoryModuleList::Query(query);
    ExportFixture f(machine.probes());
    QVERIFY(f.worker.saveSysInfo(f.scratch.path()));
    QCOMPARE(f.scratch.read("SystemInfo.txt"), memoryLines);
    QCOMPARE(f.output.take(), QStringList(printed));
    QVERIFY(!f.worker.queryMemoryModules());
    QCOMPARE(f.output.lines(), QStringList(printed));
}

void SystemReport::modulesThatCannotBeQueriedAreLoggedAndNoFailure()
{
    FakeSystem machine;
    machine.memory = memory;
    machine.modules.query = MemoryModuleList::Query::Unavailable;
    ExportFixture f(machine.probes());
    QVERIFY(f.worker.saveSysInfo(f.scratch.path()));
    QCOMPARE(f.scratch.read("SystemInfo.txt"), memoryLines);
    QCOMPARE(f.output.lines(), QStringList());
    const Diagnostics diagnostics;
    QVERIFY(!f.worker.queryMemoryModules());
    QCOMPARE(f.output.lines(), QStringList("memory modules not available"));
}

void SystemReport::aQueryThatBreaksReportsTheModulesBeforeAndFailsSilently()
{
    FakeSystem machine;
    machine.memory = memory;
    machine.modules = {MemoryModuleList::Query::Enumeration, {{"one", 1, 2}}};
    ExportFixture f(machine.probes());
    QVERIFY(f.worker.saveSysInfo(f.scratch.path()));
    QCOMPARE(f.scratch.read("SystemInfo.txt"),
             memoryLines + "PartNumber: one\nCapacity: 1 Kb\nSpeed: 2 MHz\n");
    const Diagnostics diagnostics;
    QVERIFY(!f.worker.queryMemoryModules());
    QCOMPARE(f.output.lines(), QStringList()); // logged by the platform module
}

void SystemReport::withoutComSecurityTheModulesAreSilentlyNotQueried()
{
    FakeSystem machine;
    machine.comSecurity = -2147417831; // RPC_E_TOO_LATE
    machine.memory = memory;
    machine.modules.modules = {{"not asked for", 1, 2}};
    ExportFixture f(machine.probes());
    QVERIFY(!f.worker.queryMemoryModules());
    QVERIFY(f.worker.saveSysInfo(f.scratch.path()));
    QCOMPARE(f.scratch.read("SystemInfo.txt"), memoryLines);
    QVERIFY(!machine.calledProbes.contains("memoryModules"));
    QCOMPARE(f.output.lines(), QStringList());
}

void SystemReport::aFileThatCannotBeOpenedIsNoFailure()
{
    FakeSystem machine;
    ExportFixture f(machine.probes());
    const QString taken = f.scratch.folder("SystemInfo.txt");
    QVERIFY(f.worker.saveSysInfo(f.scratch.path()));
    QCOMPARE(f.output.lines(), QStringList());
    const Diagnostics diagnostics;
    QVERIFY(f.worker.saveSysInfo(f.scratch.path()));
    QCOMPARE(f.output.lines().size(), 1);
    QVERIFY(f.output.contains(QString("report not written: \"%1\"").arg(taken)));
}

void SystemReport::theWorkerStoresTheTimeThenSetsTheHubThenSetsUpComSecurity()
{
    resetHub();
    FakeSystem machine;
    qint64 noted = 0;
    QString hubText;
    machine.beforeQuery = [&](const QString &) {
        noted = CLogProcessThread::startTime();
        hubText = hub().spareWorkPath;
    };
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const CLogProcessThread worker(machine.probes());
    QCOMPARE(machine.calledProbes, QStringList("comSecurity"));
    QVERIFY(noted >= before && noted <= QDateTime::currentMSecsSinceEpoch());
    QCOMPARE(hubText, "D:/Vantrel");
}

QTEST_GUILESS_MAIN(SystemReport)
#include "tst_system_report.moc"

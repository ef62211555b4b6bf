#include "NicReport.h"

#include "Diagnostics.h"
#include "ExportFixture.h"
#include "FakeSystem.h"
#include "Faults.h"

class NicReport : public QObject
{
    Q_OBJECT

private slots:
    void anUpEthernetAdapterHasSevenLinesAndAnEmptyOne();
    void aDownAdapterIsInactive();
    void speedsAreWholeMegabitsRoundedDown_data();
    void speedsAreWholeMegabitsRoundedDown();
    void hardwareAddressesOfAnyLength_data();
    void hardwareAddressesOfAnyLength();
    void withoutAHardwareAddressTheNextLineGoesOn();
    void anAdapterWithoutAddressesHasNoIpLines();
    void addressesKeepTheirOrderAndForeignFamiliesAreSkipped();
    void namesAreUtf8();
    void noAdaptersMakeAnEmptyReport();
    void fiveHundredAdaptersKeepTheirOrder();
    void aFailedQueryIsTheWholeReport();

    void anEmptyFolderIsRefusedAndNothingIsWritten();
    void anOlderReportIsReplaced();
    void aFailedQueryIsReportedAndNoFailure();
    void aFileThatCannotBeOpenedIsNoFailure();
    void aFullDiskIsLogged();
};

namespace {

NetworkAdapter ethernet()
{
    NetworkAdapter adapter;
    adapter.name = "eth0";
    adapter.hardwareAddress = QByteArray::fromHex("0a1b00ffe003");
    adapter.addresses = {{NetworkAddress::Family::IPv4, "192.168.1.20"}};
    adapter.mtu = 9000;
    adapter.transmitSpeed = 1'000'000'000;
    adapter.receiveSpeed = 100'000'000;
    adapter.up = true;
    return adapter;
}

QByteArray report(const NetworkAdapter &adapter)
{
    return nicReport({0, {adapter}});
}

} // namespace

void NicReport::anUpEthernetAdapterHasSevenLinesAndAnEmptyOne()
{
    QCOMPARE(report(ethernet()), QByteArray("Adapter: eth0\n"
                                            "MAC: 0a-1b-00-ff-e0-03\n"
                                            "IPv4: 192.168.1.20\n"
                                            "MTU: 9000 bytes\n"
                                            "TransmitLinkSpeed: 1000 Mbps\n"
                                            "ReceiveLinkSpeed: 100 Mbps\n"
                                            "Status: Active\n"
                                            "\n"));
}

void NicReport::aDownAdapterIsInactive()
{
    NetworkAdapter adapter = ethernet();
    adapter.up = false;
    QVERIFY(report(adapter).endsWith(" Mbps\nStatus: Inactive\n\n"));
}

void NicReport::speedsAreWholeMegabitsRoundedDown_data()
{
    QTest::addColumn<quint64>("speed");
    QTest::addColumn<QByteArray>("shown");
    QTest::newRow("none") << quint64(0) << QByteArray("0");
    QTest::newRow("below a megabit") << quint64(999'999) << QByteArray("0");
    QTest::newRow("a megabit") << quint64(1'000'000) << QByteArray("1");
    QTest::newRow("almost two") << quint64(1'999'999) << QByteArray("1");
    QTest::newRow("400 Gb/s") << quint64(400'000'000'000) << QByteArray("400000");
    QTest::newRow("unknown on Windows") << ~quint64(0) << QByteArray("18446744073709");
}

void NicReport::speedsAreWholeMegabitsRoundedDown()
{
    QFETCH(quint64, speed);
    QFETCH(QByteArray, shown);
    NetworkAdapter adapter = ethernet();
    adapter.transmitSpeed = speed;
    QVERIFY(report(adapter).contains("\nTransmitLinkSpeed: " + shown + " Mbps\n"));
    QVERIFY(report(adapter).contains("\nReceiveLinkSpeed: 100 Mbps\n"));
    adapter = ethernet();
    adapter.receiveSpeed = speed;
    QVERIFY(report(adapter).contains("\nTransmitLinkSpeed: 1000 Mbps\n"));
    QVERIFY(report(adapter).contains("\nReceiveLinkSpeed: " + shown + " Mbps\n"));
}

void NicReport::hardwareAddressesOfAnyLength_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("1 byte, its zero kept") << QByteArray("\x0a") << QByteArray("MAC: 0a\n");
    QTest::newRow("6 bytes, lower case")
        << QByteArray::fromHex("ABCDEF000102") << QByteArray("MAC: ab-cd-ef-00-01-02\n");
    QTest::newRow("8 bytes") << QByteArray(8, '\xff')
                             << QByteArray("MAC: ff-ff-ff-ff-ff-ff-ff-ff\n");
    QTest::newRow("20 bytes") << QByteArray(20, '\0')
                              << "MAC: " + QByteArray("00-").repeated(19) + "00\n";
}

void NicReport::hardwareAddressesOfAnyLength()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, line);
    NetworkAdapter adapter = ethernet();
    adapter.hardwareAddress = bytes;
    QVERIFY2(report(adapter).contains('\n' + line + "IPv4: "), report(adapter).constData());
}

void NicReport::withoutAHardwareAddressTheNextLineGoesOn()
{
    NetworkAdapter adapter = ethernet();
    adapter.hardwareAddress.clear();
    QVERIFY(report(adapter).startsWith("Adapter: eth0\nMAC: IPv4: 192.168.1.20\nMTU: "));
    adapter.addresses.clear();
    QVERIFY(report(adapter).startsWith("Adapter: eth0\nMAC: MTU: 9000 bytes\n"));
}

void NicReport::anAdapterWithoutAddressesHasNoIpLines()
{
    NetworkAdapter adapter = ethernet();
    adapter.addresses.clear();
    QVERIFY(report(adapter).contains("MAC: 0a-1b-00-ff-e0-03\nMTU: 9000 bytes\n"));
    QVERIFY(!report(adapter).contains("IPv"));
}

void NicReport::addressesKeepTheirOrderAndForeignFamiliesAreSkipped()
{
    NetworkAdapter adapter = ethernet();
    adapter.addresses = {{NetworkAddress::Family::IPv6, "fe80::1"},
                         {NetworkAddress::Family::Other, "nonsense"},
                         {NetworkAddress::Family::IPv4, "10.0.0.2"},
                         {NetworkAddress::Family::IPv4, "10.0.0.1"}};
    QVERIFY(report(adapter).contains("-03\nIPv6: fe80::1\nIPv4: 10.0.0.2\nIPv4: 10.0.0.1\nMTU: "));
}

void NicReport::namesAreUtf8()
{
    NetworkAdapter adapter = ethernet();
    adapter.name = "以太网 2";
    QVERIFY(report(adapter).startsWith("Adapter: \xe4\xbb\xa5\xe5\xa4\xaa\xe7\xbd\x91 2\nMAC: "));
}

void NicReport::noAdaptersMakeAnEmptyReport()
{
    QCOMPARE(nicReport({}), QByteArray());
}

void NicReport::fiveHundredAdaptersKeepTheirOrder()
{
    AdapterList list;
    QByteArray expected;
    for (int i = 0; i < 500; ++i) {
        NetworkAdapter adapter = ethernet();
        adapter.name = QString("port %1").arg(i);
        list.adapters.append(adapter);
        expected += report(adapter);
    }
    QCOMPARE(nicReport(list), expected);
    QCOMPARE(expected.count("Adapter: port "), 500);
}

void NicReport::aFailedQueryIsTheWholeReport()
{
    QCOMPARE(nicReport({111, {ethernet()}}),
             QByteArray("Call to GetAdaptersAddresses failed with error code: 111\n"));
    QCOMPARE(nicReport({0xffffffff, {}}),
             QByteArray("Call to GetAdaptersAddresses failed with error code: 4294967295\n"));
}

void NicReport::anEmptyFolderIsRefusedAndNothingIsWritten()
{
    FakeSystem machine;
    ExportFixture f(machine.probes());
    machine.calledProbes.clear();
    QVERIFY(!f.worker.saveNICInfo(QString()));
    QVERIFY(!QFile::exists("/NICInfo.txt"));
    QVERIFY(!QFile::exists("NICInfo.txt"));
    QCOMPARE(machine.calledProbes, QStringList());
    QCOMPARE(f.output.lines(), QStringList());
}

void NicReport::anOlderReportIsReplaced()
{
    FakeSystem machine;
    machine.adapters.adapters = {ethernet()};
    ExportFixture f(machine.probes());
    f.scratch.file("NICInfo.txt", QByteArray(10000, 'x'));
    QVERIFY(f.worker.saveNICInfo(f.scratch.path()));
    QCOMPARE(f.scratch.read("NICInfo.txt"), report(ethernet()));
    QCOMPARE(f.output.lines(), QStringList());
}

void NicReport::aFailedQueryIsReportedAndNoFailure()
{
    FakeSystem machine;
    machine.adapters.error = 8;
    ExportFixture f(machine.probes());
    QVERIFY(f.worker.saveNICInfo(f.scratch.path()));
    QCOMPARE(f.scratch.read("NICInfo.txt"),
             QByteArray("Call to GetAdaptersAddresses failed with error code: 8\n"));
}

void NicReport::aFileThatCannotBeOpenedIsNoFailure()
{
    FakeSystem machine;
    machine.adapters.adapters = {ethernet()};
    ExportFixture f(machine.probes());
    const QString taken = f.scratch.folder("NICInfo.txt");
    QVERIFY(f.worker.saveNICInfo(f.scratch.path()));
    QVERIFY(QFileInfo(taken).isDir());
    QCOMPARE(f.output.lines(), QStringList());
    const Diagnostics diagnostics;
    QVERIFY(f.worker.saveNICInfo(f.scratch.path()));
    QCOMPARE(f.output.lines().size(), 1);
    QVERIFY(f.output.contains(QString("report not written: \"%1\"").arg(taken)));
}

void NicReport::aFullDiskIsLogged()
{
    if (!FileSizeLimit::available())
        QSKIP("this system cannot limit the size of files");
    FakeSystem machine;
    machine.adapters.adapters = QVector<NetworkAdapter>(100, ethernet());
    ExportFixture f(machine.probes());
    const Diagnostics diagnostics;
    {
        const FileSizeLimit limit(1000);
        QVERIFY(f.worker.saveNICInfo(f.scratch.path()));
    }
    QCOMPARE(f.output.lines().size(), 1);
    QVERIFY(f.output.contains("report not written: "));
}

QTEST_GUILESS_MAIN(NicReport)
#include "tst_nic_report.moc"

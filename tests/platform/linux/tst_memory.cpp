#include "ScratchFolder.h"
#include "linux/LinuxSeams.h"

#include <QFileInfo>
#include <QTest>

class Memory : public QObject
{
    Q_OBJECT

private slots:
    void theTableGivesTotalAvailableAndTheUsedShare();
    void theUsedShareIsRoundedDownToWholePercent();
    void moreAvailableThanTotalMeansNoLoad();
    void aTableWithoutTheFiguresIsNoStatus_data();
    void aTableWithoutTheFiguresIsNoStatus();
    void aMissingTableIsNoStatus();

    void modulesComeInTheirOrderWithKilobytesAndSpeed();
    void emptySlotsAreNoModules();
    void missingPropertiesOfAModuleAreEmpty();
    void foreignBytesStayAsTheyAre();
    void moreThanTenSlotsKeepTheirOrder();
    void numbersTooLargeAreLimited();
    void otherPropertiesAreNoModules();
    void aMissingDeviceHasNoModules();
    void anotherDeviceHasNoModules();
};

namespace {

std::optional<MemoryStatus> statusOf(const QByteArray &table)
{
    ScratchFolder scratch;
    return memoryStatusFrom(scratch.file("meminfo", table));
}

} // namespace

void Memory::theTableGivesTotalAvailableAndTheUsedShare()
{
    const auto status = statusOf("MemTotal:       16000000 kB\nMemFree:         1000000 kB\n"
                                 "MemAvailable:   12000000 kB\nSwapTotal:             0 kB\n");
    QVERIFY(status);
    QCOMPARE(status->total, quint64(16'000'000) * 1024);
    QCOMPARE(status->available, quint64(12'000'000) * 1024);
    QCOMPARE(status->load, 25U);
}

void Memory::theUsedShareIsRoundedDownToWholePercent()
{
    QCOMPARE(statusOf("MemTotal: 1000 kB\nMemAvailable: 1 kB\n")->load, 99U);
    QCOMPARE(statusOf("MemTotal: 1000 kB\nMemAvailable: 991 kB\n")->load, 0U);
    QCOMPARE(statusOf("MemTotal: 1000 kB\nMemAvailable: 0 kB\n")->load, 100U);
}

void Memory::moreAvailableThanTotalMeansNoLoad()
{
    QCOMPARE(statusOf("MemTotal: 1000 kB\nMemAvailable: 5000 kB\n")->load, 0U);
}

void Memory::aTableWithoutTheFiguresIsNoStatus_data()
{
    QTest::addColumn<QByteArray>("table");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no total") << QByteArray("MemAvailable: 1 kB\n");
    QTest::newRow("no available") << QByteArray("MemTotal: 1 kB\nMemFree: 1 kB\n");
    QTest::newRow("total of nothing") << QByteArray("MemTotal: 0 kB\nMemAvailable: 0 kB\n");
    QTest::newRow("no number") << QByteArray("MemTotal: many kB\nMemAvailable: 1 kB\n");
    QTest::newRow("cut short") << QByteArray("MemTotal:");
}

void Memory::aTableWithoutTheFiguresIsNoStatus()
{
    QFETCH(QByteArray, table);
    QVERIFY(!statusOf(table));
}

void Memory::aMissingTableIsNoStatus()
{
    QVERIFY(!memoryStatusFrom("/nowhere/meminfo"));
}

void Memory::modulesComeInTheirOrderWithKilobytesAndSpeed()
{
    const auto modules = modulesIn({{"MEMORY_DEVICE_0_PART_NUMBER", "CMK32GX4M2B3200C16"},
                                    {"MEMORY_DEVICE_0_SIZE", "17179869184"},
                                    {"MEMORY_DEVICE_0_SPEED_MTS", "3200"},
                                    {"MEMORY_DEVICE_1_PART_NUMBER", "other"},
                                    {"MEMORY_DEVICE_1_SIZE", "8589934592"},
                                    {"MEMORY_DEVICE_1_SPEED_MTS", "2400"}});
    QCOMPARE(modules.size(), 2);
    QCOMPARE(modules[0].partNumber, QByteArray("CMK32GX4M2B3200C16"));
    QCOMPARE(modules[0].capacity, 16777216);
    QCOMPARE(modules[0].speed, 3200);
    QCOMPARE(modules[1].partNumber, QByteArray("other"));
    QCOMPARE(modules[1].capacity, 8388608);
    QCOMPARE(modules[1].speed, 2400);
}

void Memory::emptySlotsAreNoModules()
{
    const auto modules = modulesIn({{"MEMORY_DEVICE_0_PRESENT", "0"},
                                    {"MEMORY_DEVICE_0_LOCATOR", "DIMM A"},
                                    {"MEMORY_DEVICE_1_SIZE", "1024"},
                                    {"MEMORY_DEVICE_2_PRESENT", "0"}});
    QCOMPARE(modules.size(), 1);
    QCOMPARE(modules[0].capacity, 1);
}

void Memory::missingPropertiesOfAModuleAreEmpty()
{
    const auto modules = modulesIn({{"MEMORY_DEVICE_0_SIZE", "2048"},
                                    {"MEMORY_DEVICE_1_PART_NUMBER", "no size"},
                                    {"MEMORY_DEVICE_2_SIZE", "unknown"}});
    QCOMPARE(modules.size(), 3);
    QCOMPARE(modules[0].partNumber, QByteArray());
    QCOMPARE(modules[0].speed, 0);
    QCOMPARE(modules[1].partNumber, QByteArray("no size"));
    QCOMPARE(modules[1].capacity, 0);
    QCOMPARE(modules[2].capacity, 0);
}

void Memory::foreignBytesStayAsTheyAre()
{
    const auto modules = modulesIn({{"MEMORY_DEVICE_0_PART_NUMBER", "\xe5\x86\x85 \xff"}});
    QCOMPARE(modules.at(0).partNumber, QByteArray("\xe5\x86\x85 \xff"));
}

void Memory::moreThanTenSlotsKeepTheirOrder()
{
    QMap<QByteArray, QByteArray> properties;
    for (int i = 0; i < 64; ++i)
        properties.insert("MEMORY_DEVICE_" + QByteArray::number(i) + "_PART_NUMBER",
                          QByteArray::number(i));
    const auto modules = modulesIn(properties);
    QCOMPARE(modules.size(), 64);
    for (int i = 0; i < 64; ++i)
        QCOMPARE(modules[i].partNumber, QByteArray::number(i));
}

void Memory::numbersTooLargeAreLimited()
{
    const auto modules = modulesIn({{"MEMORY_DEVICE_0_SIZE", "18446744073709551615"},
                                    {"MEMORY_DEVICE_0_SPEED_MTS", "4294967295"}});
    QCOMPARE(modules.at(0).capacity, 2147483647);
    QCOMPARE(modules.at(0).speed, 2147483647);
}

void Memory::otherPropertiesAreNoModules()
{
    QVERIFY(modulesIn({}).isEmpty());
    QVERIFY(modulesIn({{"DEVPATH", "/devices/virtual/dmi/id"},
                       {"MEMORY_ARRAY_NUM_DEVICES", "2"},
                       {"MEMORY_DEVICE_X_SIZE", "1"}})
                .isEmpty());
}

void Memory::aMissingDeviceHasNoModules()
{
    const MemoryModuleList list = memoryModulesFrom("/sys/devices/nowhere");
    QCOMPARE(list.query, MemoryModuleList::Query::Complete);
    QVERIFY(list.modules.isEmpty());
}

void Memory::anotherDeviceHasNoModules()
{
    const QString loopback = "/sys/devices/virtual/net/lo";
    if (!QFileInfo::exists(loopback))
        QSKIP("there is no device here whose properties could be asked for");
    const MemoryModuleList list = memoryModulesFrom(loopback);
    QCOMPARE(list.query, MemoryModuleList::Query::Complete);
    QVERIFY(list.modules.isEmpty());
}

QTEST_GUILESS_MAIN(Memory)
#include "tst_memory.moc"

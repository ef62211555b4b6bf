#include "ScratchFolder.h"
#include "linux/LinuxSeams.h"

#include <QNetworkInterface>
#include <QTest>

#include <algorithm>

/// Adapters as described by the kernel's files; names are this machine's.
class Adapters : public QObject
{
    Q_OBJECT

private slots:
    void speedIsMegabitsOrNone_data();
    void speedIsMegabitsOrNone();
    void operationalAdaptersAreUp_data();
    void operationalAdaptersAreUp();
    void withoutTheKernelsFolderSpeedIsNoneAndUpIsRunning();
    void theLoopbackHasNoHardwareAddress();
    void allAdaptersAreListedInTheirOrder();
};

namespace {

QString loopback()
{
    for (const QNetworkInterface &found : QNetworkInterface::allInterfaces()) {
        if (found.type() == QNetworkInterface::Loopback)
            return found.name();
    }
    return {};
}

NetworkAdapter named(const AdapterList &list, const QString &name)
{
    const auto found = std::find_if(list.adapters.begin(), list.adapters.end(),
                                    [&](const auto &adapter) { return adapter.name == name; });
    return found == list.adapters.end() ? NetworkAdapter() : *found;
}

/// The loopback adapter with a kernel file of these contents.
NetworkAdapter loopbackWith(const char *file, const QByteArray &contents)
{
    ScratchFolder scratch;
    scratch.file(loopback() + '/' + file, contents);
    return named(networkAdaptersFrom(scratch.path()), loopback());
}

} // namespace

void Adapters::speedIsMegabitsOrNone_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<quint64>("speed");
    QTest::newRow("1 Gb/s") << QByteArray("1000\n") << quint64(1'000'000'000);
    QTest::newRow("400 Gb/s") << QByteArray("400000\n") << quint64(400'000'000'000);
    QTest::newRow("down") << QByteArray("-1\n") << quint64(0);
    QTest::newRow("down, unsigned") << QByteArray("4294967295\n") << quint64(0);
    QTest::newRow("nonsense") << QByteArray("fast\n") << quint64(0);
    QTest::newRow("empty") << QByteArray() << quint64(0);
}

void Adapters::speedIsMegabitsOrNone()
{
    QFETCH(QByteArray, file);
    const NetworkAdapter adapter = loopbackWith("speed", file);
    QTEST(adapter.transmitSpeed, "speed");
    QTEST(adapter.receiveSpeed, "speed");
}

void Adapters::operationalAdaptersAreUp_data()
{
    const bool running = QNetworkInterface::interfaceFromName(loopback())
                             .flags()
                             .testFlag(QNetworkInterface::IsRunning);
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<bool>("up");
    QTest::newRow("up") << QByteArray("up\n") << true;
    QTest::newRow("unknown") << QByteArray("unknown\n") << running;
    QTest::newRow("down") << QByteArray("down\n") << false;
    QTest::newRow("dormant") << QByteArray("dormant\n") << false;
    QTest::newRow("lowerlayerdown") << QByteArray("lowerlayerdown\n") << false;
}

void Adapters::operationalAdaptersAreUp()
{
    QFETCH(QByteArray, state);
    QTEST(loopbackWith("operstate", state).up, "up");
}

void Adapters::withoutTheKernelsFolderSpeedIsNoneAndUpIsRunning()
{
    const AdapterList list = networkAdaptersFrom("/nowhere");
    QCOMPARE(list.error, 0U);
    QVERIFY(!list.adapters.isEmpty());
    for (const NetworkAdapter &adapter : list.adapters) {
        const QNetworkInterface found = QNetworkInterface::interfaceFromName(adapter.name);
        QCOMPARE(adapter.transmitSpeed, quint64(0));
        QCOMPARE(adapter.up, found.flags().testFlag(QNetworkInterface::IsRunning));
    }
}

void Adapters::theLoopbackHasNoHardwareAddress()
{
    const NetworkAdapter adapter = named(networkAdapters(), loopback());
    QCOMPARE(adapter.name, loopback());
    QCOMPARE(adapter.hardwareAddress, QByteArray());
    QVERIFY(adapter.mtu > 0);
}

void Adapters::allAdaptersAreListedInTheirOrder()
{
    QStringList names;
    for (const NetworkAdapter &adapter : networkAdapters().adapters)
        names.append(adapter.name);
    QStringList expected;
    for (const QNetworkInterface &found : QNetworkInterface::allInterfaces())
        expected.append(found.humanReadableName());
    QVERIFY(!expected.isEmpty());
    QCOMPARE(names, expected);
}

QTEST_GUILESS_MAIN(Adapters)
#include "tst_adapters.moc"

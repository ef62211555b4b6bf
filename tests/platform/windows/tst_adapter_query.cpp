#include "windows/Win32Seams.h"

#include <QTest>

// winsock2.h must precede windows.h, which would include its predecessor.
#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace {

constexpr unsigned long anyFamily = 0;
constexpr unsigned long ipv4 = 2;
constexpr unsigned long skipMulticast = 4;
constexpr unsigned long bufferTooSmall = 111;
constexpr unsigned long noAdapters = 232;
constexpr unsigned long room = 16000;

struct Call
{
    unsigned long family;
    unsigned long flags;
    bool hasRoom;
    unsigned long size;
};

/// Two adapters as the system lists them; the first has three addresses.
struct TwoAdapters
{
    TwoAdapters()
    {
        const quint8 mac[] = {0x02, 0x03, 0x04, 0x05, 0x06, 0x0a, 0xff, 0xff}; // 6 of them count
        std::copy(std::begin(mac), std::end(mac), first.PhysicalAddress);
        first.PhysicalAddressLength = 6;
        first.FriendlyName = firstName;
        first.Mtu = 1500;
        first.TransmitLinkSpeed = 10'000'000'000;
        first.ReceiveLinkSpeed = 5'000'000'000;
        first.OperStatus = IF_OPER_STATUS(1);
        first.FirstUnicastAddress = &unicast[0];
        first.Next = &second;
        second.FriendlyName = secondName;
        second.Mtu = 9000;
        second.TransmitLinkSpeed = 1;
        second.ReceiveLinkSpeed = 2;
        second.OperStatus = IF_OPER_STATUS(2);

        inet6.sin6_family = 23;
        inet6.sin6_addr.u.Byte[0] = 0xfe;
        inet6.sin6_addr.u.Byte[1] = 0x80;
        inet6.sin6_addr.u.Byte[15] = 0x1a;
        other.sa_family = 6;
        inet.sin_family = 2;
        inet.sin_addr.S_un.S_un_b = {192, 168, 0, 10};
        unicast[0].Address.lpSockaddr = reinterpret_cast<sockaddr *>(&inet6);
        unicast[0].Next = &unicast[1];
        unicast[1].Address.lpSockaddr = &other;
        unicast[1].Next = &unicast[2];
        unicast[2].Address.lpSockaddr = reinterpret_cast<sockaddr *>(&inet);
    }
    TwoAdapters(const TwoAdapters &) = delete;
    TwoAdapters &operator=(const TwoAdapters &) = delete;

    IP_ADAPTER_ADDRESSES first{};

private:
    wchar_t firstName[4] = L"以太网";
    wchar_t secondName[5] = L"WLAN";
    IP_ADAPTER_ADDRESSES second{};
    IP_ADAPTER_UNICAST_ADDRESS unicast[3]{};
    sockaddr_in inet{};
    sockaddr_in6 inet6{};
    sockaddr other{};
};

} // namespace

/// The calls that query the adapters.
class AdapterQuery : public QObject
{
    Q_OBJECT

private slots:
    void asksForTheSizeAndThenForTheAdapters();
    void returnsAllFieldsInTheSystemsOrder();
    void isNotRepeated_data();
    void isNotRepeated();
};

void AdapterQuery::asksForTheSizeAndThenForTheAdapters()
{
    QVector<Call> calls;
    const ListAdapters list = [&](unsigned long family, unsigned long flags, void *found,
                                  unsigned long *size) {
        calls.append({family, flags, found != nullptr, *size});
        if (found == nullptr) {
            *size = room;
            return bufferTooSmall;
        }
        std::memset(found, 0, room); // one adapter without properties
        return reinterpret_cast<std::uintptr_t>(found) % alignof(std::max_align_t) == 0 ? 0UL : 1UL;
    };
    const AdapterList found = networkAdaptersBy(list);
    QCOMPARE(found.error, 0U);
    QCOMPARE(found.adapters.size(), 1);
    QCOMPARE(calls.size(), 2);
    QCOMPARE(calls.at(0).family, anyFamily);
    QCOMPARE(calls.at(0).flags, 0UL);
    QVERIFY(!calls.at(0).hasRoom);
    QCOMPARE(calls.at(0).size, 0UL);
    QCOMPARE(calls.at(1).family, ipv4);
    QCOMPARE(calls.at(1).flags, skipMulticast);
    QVERIFY(calls.at(1).hasRoom);
    QCOMPARE(calls.at(1).size, room);
}

void AdapterQuery::returnsAllFieldsInTheSystemsOrder()
{
    using Family = NetworkAddress::Family;

    const TwoAdapters system;
    const ListAdapters list = [&](unsigned long, unsigned long, void *found, unsigned long *size) {
        *size = sizeof system.first;
        if (found == nullptr)
            return bufferTooSmall;
        std::memcpy(found, &system.first, sizeof system.first);
        return 0UL;
    };
    const AdapterList found = networkAdaptersBy(list);
    QCOMPARE(found.error, 0U);
    QCOMPARE(found.adapters.size(), 2);

    const NetworkAdapter &first = found.adapters.at(0);
    QCOMPARE(first.name, "以太网");
    QCOMPARE(first.hardwareAddress, QByteArray::fromHex("02030405060a"));
    QCOMPARE(first.mtu, 1500U);
    QCOMPARE(first.transmitSpeed, quint64(10'000'000'000));
    QCOMPARE(first.receiveSpeed, quint64(5'000'000'000));
    QVERIFY(first.up);
    QCOMPARE(first.addresses.size(), 3);
    QCOMPARE(first.addresses.at(0).family, Family::IPv6);
    QCOMPARE(first.addresses.at(0).text, QByteArray("fe80::1a"));
    QCOMPARE(first.addresses.at(1).family, Family::Other);
    QCOMPARE(first.addresses.at(1).text, QByteArray());
    QCOMPARE(first.addresses.at(2).family, Family::IPv4);
    QCOMPARE(first.addresses.at(2).text, QByteArray("192.168.0.10"));

    const NetworkAdapter &second = found.adapters.at(1);
    QCOMPARE(second.name, "WLAN");
    QCOMPARE(second.hardwareAddress, QByteArray());
    QCOMPARE(second.mtu, 9000U);
    QCOMPARE(second.transmitSpeed, quint64(1));
    QCOMPARE(second.receiveSpeed, quint64(2));
    QVERIFY(!second.up);
    QVERIFY(second.addresses.isEmpty());
}

void AdapterQuery::isNotRepeated_data()
{
    QTest::addColumn<unsigned long>("error");
    QTest::newRow("an adapter came in between") << bufferTooSmall;
    QTest::newRow("no adapters") << noAdapters;
}

void AdapterQuery::isNotRepeated()
{
    QFETCH(unsigned long, error);
    int calls = 0;
    const ListAdapters list = [&](unsigned long, unsigned long, void *, unsigned long *) {
        ++calls;
        return error;
    };
    const AdapterList found = networkAdaptersBy(list);
    QCOMPARE(found.error, quint32(error));
    QVERIFY(found.adapters.isEmpty());
    QCOMPARE(calls, 2);
}

QTEST_GUILESS_MAIN(AdapterQuery)
#include "tst_adapter_query.moc"

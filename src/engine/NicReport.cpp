#include "NicReport.h"

#include "NetworkAdapters.h"

namespace {

constexpr quint64 megabit = 1'000'000;

/// "0a-1b-…" and a line feed. Without an address both are missing: the next line follows on the
/// same one, as readers of the report expect.
QByteArray hardwareAddress(const QByteArray &bytes)
{
    return bytes.isEmpty() ? QByteArray() : bytes.toHex('-') + '\n';
}

QByteArray addressLine(const NetworkAddress &address)
{
    switch (address.family) {
    case NetworkAddress::Family::IPv4:
        return "IPv4: " + address.text + '\n';
    case NetworkAddress::Family::IPv6:
        return "IPv6: " + address.text + '\n';
    case NetworkAddress::Family::Other:
        break;
    }
    return {};
}

QByteArray block(const NetworkAdapter &adapter)
{
    QByteArray text = "Adapter: " + adapter.name.toUtf8() + '\n';
    text += "MAC: " + hardwareAddress(adapter.hardwareAddress);
    for (const NetworkAddress &address : adapter.addresses)
        text += addressLine(address);
    text += "MTU: " + QByteArray::number(adapter.mtu) + " bytes\n";
    text += "TransmitLinkSpeed: " + QByteArray::number(adapter.transmitSpeed / megabit) + " Mbps\n";
    text += "ReceiveLinkSpeed: " + QByteArray::number(adapter.receiveSpeed / megabit) + " Mbps\n";
    text += adapter.up ? "Status: Active\n\n" : "Status: Inactive\n\n";
    return text;
}

} // namespace

QByteArray nicReport(const AdapterList &list)
{
    if (list.error != 0)
        return "Call to GetAdaptersAddresses failed with error code: " +
               QByteArray::number(list.error) + '\n';
    QByteArray text;
    for (const NetworkAdapter &adapter : list.adapters)
        text += block(adapter);
    return text;
}

#include "NetworkAdapters.h"

#include "linux/LinuxSeams.h"

#include <QFile>
#include <QNetworkInterface>

namespace {

constexpr quint64 megabit = 1'000'000;

/// The contents of a sysfs attribute of an adapter; empty if it cannot be read.
QByteArray readAttribute(const QString &adapterFolder, const char *name)
{
    QFile file(adapterFolder + QLatin1Char('/') + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

/// Bits per second. The kernel reports megabits, and -1 (or its unsigned value) for a link without
/// a speed.
quint64 speedOf(const QString &adapterFolder)
{
    bool isNumber = false;
    const qint32 speed = readAttribute(adapterFolder, "speed").toInt(&isNumber);
    return isNumber && speed > 0 ? quint64(speed) * megabit : 0;
}

/// Adapters without an operational state, such as loopback, are up while they run.
bool isUp(const QString &adapterFolder, bool running)
{
    const QByteArray state = readAttribute(adapterFolder, "operstate");
    return state == "up" || ((state == "unknown" || state.isEmpty()) && running);
}

QByteArray hardwareAddressOf(const QNetworkInterface &adapter)
{
    if (adapter.type() == QNetworkInterface::Loopback) // all zeros
        return {};
    return QByteArray::fromHex(adapter.hardwareAddress().toLatin1());
}

QVector<NetworkAddress> addressesOf(const QNetworkInterface &adapter)
{
    QVector<NetworkAddress> addresses;
    for (const QNetworkAddressEntry &entry : adapter.addressEntries()) {
        if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol)
            addresses.append({NetworkAddress::Family::IPv4, entry.ip().toString().toLatin1()});
    }
    return addresses;
}

} // namespace

AdapterList networkAdapters()
{
    return networkAdaptersFrom();
}

AdapterList networkAdaptersFrom(const QString &netClass)
{
    AdapterList list;
    for (const QNetworkInterface &found : QNetworkInterface::allInterfaces()) {
        const QString folder = netClass + QLatin1Char('/') + found.name();
        NetworkAdapter adapter;
        adapter.name = found.humanReadableName();
        adapter.hardwareAddress = hardwareAddressOf(found);
        adapter.addresses = addressesOf(found);
        adapter.mtu = quint32(found.maximumTransmissionUnit());
        adapter.transmitSpeed = adapter.receiveSpeed = speedOf(folder);
        adapter.up = isUp(folder, found.flags().testFlag(QNetworkInterface::IsRunning));
        list.adapters.append(adapter);
    }
    return list;
}

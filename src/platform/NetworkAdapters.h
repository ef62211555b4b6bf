#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// An adapter's address as text.
struct NetworkAddress
{
    enum class Family { IPv4, IPv6, Other };

    Family family = Family::Other;
    QByteArray text;
};

struct NetworkAdapter
{
    QString name;               ///< as shown to the user
    QByteArray hardwareAddress; ///< raw bytes; empty if there is none
    QVector<NetworkAddress> addresses;
    quint32 mtu = 0;           ///< bytes
    quint64 transmitSpeed = 0; ///< bits per second; 0 if unknown
    quint64 receiveSpeed = 0;  ///< bits per second; 0 if unknown
    bool up = false;
};

struct AdapterList
{
    quint32 error = 0; ///< system error code if the query failed; the list is empty then
    QVector<NetworkAdapter> adapters; ///< in the system's order
};

/// Queries the network adapters with their IPv4 addresses. Any thread.
[[nodiscard]] AdapterList networkAdapters();

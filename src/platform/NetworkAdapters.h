#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// An address of an adapter, as text.
struct NetworkAddress
{
    enum class Family { IPv4, IPv6, Other };

    Family family = Family::Other;
    QByteArray text;
};

struct NetworkAdapter
{
    QString name;               ///< as the user knows it
    QByteArray hardwareAddress; ///< its bytes; empty: it has none
    QVector<NetworkAddress> addresses;
    quint32 mtu = 0;           ///< bytes
    quint64 transmitSpeed = 0; ///< bits per second
    quint64 receiveSpeed = 0;  ///< bits per second
    bool up = false;
};

struct AdapterList
{
    quint32 error = 0; ///< not 0: the query failed with the system's error code, nothing is listed
    QVector<NetworkAdapter> adapters; ///< in the system's order
};

/// The network adapters with their IPv4 addresses, asked anew at each call. Any thread.
[[nodiscard]] AdapterList networkAdapters();

#include "windows/Win32Seams.h"

// winsock2.h must precede windows.h, which would include its predecessor.
#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>

#include <array>
#include <cstddef>
#include <vector>

namespace {

NetworkAddress addressOf(const SOCKET_ADDRESS &socketAddress)
{
    const sockaddr *generic = socketAddress.lpSockaddr;
    NetworkAddress address;
    const void *bytes = nullptr;
    if (generic->sa_family == AF_INET) {
        address.family = NetworkAddress::Family::IPv4;
        bytes = &reinterpret_cast<const sockaddr_in *>(generic)->sin_addr;
    } else if (generic->sa_family == AF_INET6) {
        address.family = NetworkAddress::Family::IPv6;
        bytes = &reinterpret_cast<const sockaddr_in6 *>(generic)->sin6_addr;
    } else {
        return address;
    }
    std::array<char, 100> text{};
    inet_ntop(generic->sa_family, bytes, text.data(), text.size());
    address.text = text.data();
    return address;
}

NetworkAdapter adapterOf(const IP_ADAPTER_ADDRESSES &found)
{
    NetworkAdapter adapter;
    adapter.name = QString::fromWCharArray(found.FriendlyName);
    adapter.hardwareAddress = QByteArray(reinterpret_cast<const char *>(found.PhysicalAddress),
                                         static_cast<int>(found.PhysicalAddressLength));
    for (const auto *entry = found.FirstUnicastAddress; entry != nullptr; entry = entry->Next)
        adapter.addresses.append(addressOf(entry->Address));
    adapter.mtu = found.Mtu;
    adapter.transmitSpeed = found.TransmitLinkSpeed;
    adapter.receiveSpeed = found.ReceiveLinkSpeed;
    adapter.up = found.OperStatus == IfOperStatusUp;
    return adapter;
}

/// A buffer of @p size bytes with maximum alignment.
std::vector<std::max_align_t> roomFor(ULONG size)
{
    return std::vector<std::max_align_t>(size / sizeof(std::max_align_t) + 1);
}

ULONG listAll(ULONG family, ULONG flags, void *room, ULONG *size)
{
    return GetAdaptersAddresses(family, flags, nullptr, static_cast<IP_ADAPTER_ADDRESSES *>(room),
                                size);
}

} // namespace

AdapterList networkAdapters()
{
    return networkAdaptersBy(listAll);
}

AdapterList networkAdaptersBy(const ListAdapters &list)
{
    ULONG size = 0;
    list(AF_UNSPEC, 0, nullptr, &size);
    std::vector<std::max_align_t> room = roomFor(size);

    AdapterList found;
    found.error = list(AF_INET, GAA_FLAG_SKIP_MULTICAST, room.data(), &size);
    if (found.error != ERROR_SUCCESS)
        return found;
    const auto *entry = reinterpret_cast<const IP_ADAPTER_ADDRESSES *>(room.data());
    for (; entry != nullptr; entry = entry->Next)
        found.adapters.append(adapterOf(*entry));
    return found;
}

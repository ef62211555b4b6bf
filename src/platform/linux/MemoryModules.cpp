#include "MemoryModules.h"

#include "linux/LinuxSeams.h"

#include <QFile>

#include <libudev.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace {

struct Release
{
    void operator()(udev *context) const { udev_unref(context); }
    void operator()(udev_device *device) const { udev_device_unref(device); }
};

QMap<QByteArray, QByteArray> propertiesOf(udev_device *device)
{
    QMap<QByteArray, QByteArray> properties;
    udev_list_entry *entry = nullptr;
    udev_list_entry_foreach(entry, udev_device_get_properties_list_entry(device))
        properties.insert(udev_list_entry_get_name(entry), udev_list_entry_get_value(entry));
    return properties;
}

/// The number in a property, limited to 32 bits; 0 if there is none.
qint32 number(const QByteArray &property, quint64 unit = 1)
{
    constexpr quint64 most = quint64(std::numeric_limits<qint32>::max());
    return qint32(std::min(property.toULongLong() / unit, most));
}

} // namespace

MemoryModuleList memoryModules()
{
    return memoryModulesFrom();
}

MemoryModuleList memoryModulesFrom(const QString &device)
{
    const std::unique_ptr<udev, Release> context(udev_new());
    if (!context)
        return {MemoryModuleList::Query::Unavailable, {}};
    const std::unique_ptr<udev_device, Release> found(
        udev_device_new_from_syspath(context.get(), QFile::encodeName(device).constData()));
    if (!found)
        return {};
    return {MemoryModuleList::Query::Complete, modulesIn(propertiesOf(found.get()))};
}

QVector<MemoryModule> modulesIn(const QMap<QByteArray, QByteArray> &properties)
{
    // Slots, including empty ones, are numbered without gaps.
    QVector<MemoryModule> modules;
    for (int slot = 0;; ++slot) {
        const QByteArray prefix = "MEMORY_DEVICE_" + QByteArray::number(slot) + '_';
        const auto first = properties.lowerBound(prefix);
        if (first == properties.end() || !first.key().startsWith(prefix))
            return modules;
        if (properties.value(prefix + "PRESENT") == "0")
            continue;
        modules.append({properties.value(prefix + "PART_NUMBER"),
                        number(properties.value(prefix + "SIZE"), 1024),
                        number(properties.value(prefix + "SPEED_MTS"))});
    }
}

#pragma once

#include "CrashDumpPaths.h"
#include "MemoryModules.h"
#include "MemoryStatus.h"
#include "NetworkAdapters.h"

#include <QMap>
#include <QString>

// This folder's queries with their sources as parameters. The public headers use the defaults.

/// @p netClass: the folder with one subfolder per adapter. An adapter without one has speed 0 and
/// is up if it is running.
[[nodiscard]] AdapterList
networkAdaptersFrom(const QString &netClass = QStringLiteral("/sys/class/net"));

/// @p memInfo: the kernel's memory table.
[[nodiscard]] std::optional<MemoryStatus>
memoryStatusFrom(const QString &memInfo = QStringLiteral("/proc/meminfo"));

/// @p device: the device with the firmware's tables. Without it, as on many virtual machines, there
/// are no modules.
[[nodiscard]] MemoryModuleList
memoryModulesFrom(const QString &device = QStringLiteral("/sys/devices/virtual/dmi/id"));

/// The modules described by the properties of such a device. Capacity in Kb, speed in MT/s.
[[nodiscard]] QVector<MemoryModule> modulesIn(const QMap<QByteArray, QByteArray> &properties);

struct Journal
{
    QString program = QStringLiteral("journalctl");
    int timeout = 60'000; ///< milliseconds without output after which it is killed
};

/// Logs what the program writes to its standard error, up to 64 KiB.
[[nodiscard]] bool exportJournal(const QString &channel, const QString &target,
                                 const Journal &journal = {});

/// @p crashes: the folder of kernel dumps. @p kernelLogs: the folder of kernel logs of crashes.
[[nodiscard]] CrashDumpPaths
crashDumpPathsFrom(const QString &crashes = QStringLiteral("/var/crash"),
                   const QString &kernelLogs = QStringLiteral("/var/lib/systemd/pstore"));

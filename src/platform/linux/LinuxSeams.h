#pragma once

#include "CrashDumpPaths.h"
#include "MemoryModules.h"
#include "MemoryStatus.h"
#include "NetworkAdapters.h"

#include <QMap>
#include <QString>

// The answers of this folder with the places they are read from as parameters; what the headers
// of the questions declare uses the defaults.

/// @p netClass: the folder with a sub-folder of files for each adapter. An adapter that is not
/// there has speed 0, and is up when it runs.
[[nodiscard]] AdapterList
networkAdaptersFrom(const QString &netClass = QStringLiteral("/sys/class/net"));

/// @p memInfo: the kernel's memory table.
[[nodiscard]] std::optional<MemoryStatus>
memoryStatusFrom(const QString &memInfo = QStringLiteral("/proc/meminfo"));

/// @p device: the device that carries the firmware's tables. One that is missing, as on many
/// virtual machines, has no modules.
[[nodiscard]] MemoryModuleList
memoryModulesFrom(const QString &device = QStringLiteral("/sys/devices/virtual/dmi/id"));

/// The modules that the properties of such a device describe. Capacity in Kb, speed in MT/s.
[[nodiscard]] QVector<MemoryModule> modulesIn(const QMap<QByteArray, QByteArray> &properties);

struct Journal
{
    QString program = QStringLiteral("journalctl");
    int timeout = 60'000; ///< ends a program that writes nothing for so long, milliseconds
};

/// What the program writes to its standard error is logged.
[[nodiscard]] bool exportJournal(const QString &channel, const QString &target,
                                 const Journal &journal = {});

/// @p crashes: where kernel dumps are kept. @p kernelLogs: where kernel logs of crashes are.
[[nodiscard]] CrashDumpPaths
crashDumpPathsFrom(const QString &crashes = QStringLiteral("/var/crash"),
                   const QString &kernelLogs = QStringLiteral("/var/lib/systemd/pstore"));

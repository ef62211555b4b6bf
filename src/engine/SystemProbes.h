#pragma once

#include "ComSecurity.h"
#include "CrashDumpPaths.h"
#include "EventLog.h"
#include "MemoryModules.h"
#include "MemoryStatus.h"
#include "NetworkAdapters.h"

#include <QString>

#include <functional>
#include <optional>

/// The functions by which the export items query this machine; see the headers of the defaults. All
/// are called on the worker thread, except comSecurity.
struct SystemProbes
{
    /// Called once, on the thread that constructs the worker.
    std::function<qint32()> comSecurity = setUpComSecurity;
    std::function<AdapterList()> adapters = networkAdapters;
    std::function<std::optional<MemoryStatus>()> memory = memoryStatus;
    std::function<MemoryModuleList()> memoryModules = ::memoryModules;
    std::function<bool(const QString &channel, const QString &target)> exportEventLog =
        ::exportEventLog;
    std::function<CrashDumpPaths()> crashDumpPaths = ::crashDumpPaths;
};

#pragma once

#include "CConfiguration.h"
#include "CLogProcessThread.h"

/// An item of an export: what a check box of the export panel stands for.
struct ExportItem
{
    std::atomic<bool> CConfiguration::*isChosen;             ///< in the hub
    bool (CLogProcessThread::*save)(const QString &staging); ///< false: the item failed
    const char *failureText; ///< for the debug output; null: nothing is printed
};

/// All items but the SDK logs, in the order in which an export gathers them.
inline constexpr ExportItem exportItems[] = {
    {&CConfiguration::systemLog, &CLogProcessThread::saveEventLog, "saveEventLog failed!"},
    {&CConfiguration::systemInfo, &CLogProcessThread::saveSysInfo, "saveSysInfo failed!"},
    {&CConfiguration::nicInfo, &CLogProcessThread::saveNICInfo, "saveNICInfo failed!"},
    // These words, not its own: support tools know them.
    {&CConfiguration::systemDump, &CLogProcessThread::saveSystemDump, "saveEventLog failed!"},
    {&CConfiguration::clientDump, &CLogProcessThread::saveClientDump, nullptr},
};

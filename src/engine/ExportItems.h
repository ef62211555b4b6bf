#pragma once

#include "CConfiguration.h"
#include "CLogProcessThread.h"

/// An export item: what a check box of the export panel stands for.
struct ExportItem
{
    std::atomic<bool> CConfiguration::*isChosen;             ///< in the hub
    bool (CLogProcessThread::*save)(const QString &staging); ///< false: the item failed
    const char *failureText; ///< for the debug output, known to support tools; or null
};

/// All items except the SDK logs, in the order in which they are collected.
inline constexpr ExportItem exportItems[] = {
    {&CConfiguration::systemLog, &CLogProcessThread::saveEventLog, "saveEventLog failed!"},
    {&CConfiguration::systemInfo, &CLogProcessThread::saveSysInfo, "saveSysInfo failed!"},
    {&CConfiguration::nicInfo, &CLogProcessThread::saveNICInfo, "saveNICInfo failed!"},
    // The same text as above, not its own: support tools know it.
    {&CConfiguration::systemDump, &CLogProcessThread::saveSystemDump, "saveEventLog failed!"},
    {&CConfiguration::clientDump, &CLogProcessThread::saveClientDump, nullptr},
};

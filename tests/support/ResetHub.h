#pragma once

#include "CConfiguration.h"

/// Puts the hub's fields back to what a fresh run starts with. For tests that link the hub.
inline void resetHub()
{
    CConfiguration &hub = *CConfiguration::instance();
    hub.exportPath.clear();
    hub.spareWorkPath.clear();
    hub.systemLog = false;
    hub.sdkLog = true;
    hub.nicInfo = false;
    hub.systemInfo = false;
    hub.systemDump = false;
    hub.clientDump = false;
    hub.maxDisplayedLogs = 1000;
    hub.updateIntervalMs = 1000;
    hub.logLevel = 0;
    hub.logConfigPath.clear();
}

#pragma once

#include "CConfiguration.h"

// For tests that link the hub.

[[nodiscard]] inline CConfiguration &hub()
{
    return *CConfiguration::instance();
}

/// Resets the hub's fields to their defaults.
inline void resetHub()
{
    hub().exportPath.clear();
    hub().spareWorkPath.clear();
    hub().systemLog = false;
    hub().sdkLog = true;
    hub().nicInfo = false;
    hub().systemInfo = false;
    hub().systemDump = false;
    hub().clientDump = false;
    hub().maxDisplayedLogs = 1000;
    hub().updateIntervalMs = 1000;
    hub().logLevel = 0;
    hub().logConfigPath.clear();
}

#include "MemoryStatus.h"

#include <windows.h>

std::optional<MemoryStatus> memoryStatus()
{
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof(status);
    if (GlobalMemoryStatusEx(&status) == FALSE)
        return {};
    return MemoryStatus{status.dwMemoryLoad, status.ullTotalPhys, status.ullAvailPhys};
}

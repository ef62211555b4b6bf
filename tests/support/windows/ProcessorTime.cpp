#include "ProcessorTime.h"

#include <windows.h>

namespace {

double seconds(const FILETIME &time)
{
    constexpr double ticks = 1e7; // per second
    return (double(time.dwHighDateTime) * 4294967296.0 + double(time.dwLowDateTime)) / ticks;
}

} // namespace

double processorSeconds()
{
    FILETIME created;
    FILETIME ended;
    FILETIME inSystem;
    FILETIME inProgram;
    if (GetProcessTimes(GetCurrentProcess(), &created, &ended, &inSystem, &inProgram) == FALSE)
        return 0;
    return seconds(inSystem) + seconds(inProgram);
}

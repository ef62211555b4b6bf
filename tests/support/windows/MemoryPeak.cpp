#include "MemoryPeak.h"

#include <windows.h>

#include <psapi.h>

namespace {

PROCESS_MEMORY_COUNTERS counters()
{
    PROCESS_MEMORY_COUNTERS result = {};
    if (!K32GetProcessMemoryInfo(GetCurrentProcess(), &result, sizeof(result)))
        qFatal("cannot read the memory use");
    return result;
}

} // namespace

// The system's peak is never reset, so an earlier one counts too, which makes the test stricter.
MemoryPeak::MemoryPeak()
    : before(qint64(counters().WorkingSetSize))
{
}

qint64 MemoryPeak::growth() const
{
    return qint64(counters().PeakWorkingSetSize) - before;
}

#include "SystemQuestions.h"

#include "ComSecurity.h"
#include "EventLog.h"

SystemQuestions systemQuestions()
{
    return {setUpComSecurity, networkAdapters, memoryStatus,
            memoryModules,    exportEventLog,  dumpPlaces};
}

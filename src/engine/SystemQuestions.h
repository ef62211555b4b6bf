#pragma once

#include "DumpPlaces.h"
#include "MemoryModules.h"
#include "MemoryStatus.h"
#include "NetworkAdapters.h"

#include <functional>
#include <optional>

/// Who answers what the items ask about this machine; the questions' headers say what each answer
/// means. All are called on the worker thread, except comSecurity.
struct SystemQuestions
{
    std::function<qint32()> comSecurity; ///< called once, on the thread that builds the worker
    std::function<AdapterList()> adapters;
    std::function<std::optional<MemoryStatus>()> memory;
    std::function<MemoryModuleList()> memoryModules;
    std::function<bool(const QString &channel, const QString &target)> exportEventLog;
    std::function<DumpPlaces()> dumpPlaces;
};

/// The system itself answers.
[[nodiscard]] SystemQuestions systemQuestions();

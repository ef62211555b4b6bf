#pragma once

#include <QByteArray>
#include <QVector>

/// A memory module. Missing properties are empty or 0; larger numbers are limited to 2³¹ − 1.
struct MemoryModule
{
    QByteArray partNumber; ///< in the system's 8-bit encoding
    qint32 capacity = 0;   ///< Kb; on Windows the low half of a pointer to the text
    qint32 speed = 0;      ///< MHz; on Linux MT/s, which the firmware gives
};

struct MemoryModuleList
{
    /// Where the query failed, if not Complete.
    enum class Query {
        Complete,
        Unavailable,
        Library,
        Locator,
        Connection,
        Proxy,
        Execution,
        Enumeration, ///< further modules may be missing
    };

    Query query = Query::Complete;
    QVector<MemoryModule> modules; ///< in the system's order; may be empty
};

/// Queries the installed memory modules. May take seconds. Not for the GUI thread, whose COM
/// apartment conflicts with it on Windows.
[[nodiscard]] MemoryModuleList memoryModules();

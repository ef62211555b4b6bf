#pragma once

#include <QByteArray>
#include <QVector>

/// A memory module as the report shows it.
struct MemoryModule
{
    QByteArray partNumber; ///< in the system's 8-bit encoding; empty: not told
    qint32 capacity = 0;   ///< Kb where the system gives a number, see the system's answer
    qint32 speed = 0;      ///< MHz; 0: not told
};

struct MemoryModuleList
{
    /// How far the query came. Everything but Complete means that it failed there.
    enum class Query {
        Complete,
        Unavailable,
        Library,
        Locator,
        Connection,
        Proxy,
        Execution,
        Enumeration, ///< it broke: modules behind those that are listed may be missing
    };

    Query query = Query::Complete;
    QVector<MemoryModule> modules; ///< in the system's order; none is no failure
};

/// The installed memory modules. May take seconds. Not for the GUI thread, whose COM apartment it
/// would clash with on Windows.
[[nodiscard]] MemoryModuleList memoryModules();

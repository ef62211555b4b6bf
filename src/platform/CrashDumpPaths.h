#pragma once

#include <QString>

/// Where the system stores crash dumps. Paths need not exist.
struct CrashDumpPaths
{
    QString kernelDumpTestPath; ///< the kernel dump, as its existence is tested; may be empty
    QString kernelDump;         ///< the same file, as it is named in archives
    QString minidumps;          ///< folder, searched recursively
    QString minidumpNamePart;   ///< part of a minidump's file name, case-sensitive
    /// Minidumps that cannot be read are skipped.
    bool unreadableIsMissing = false;
};

/// Searches the disk at each call. Any thread.
[[nodiscard]] CrashDumpPaths crashDumpPaths();

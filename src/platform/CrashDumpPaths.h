#pragma once

#include <QString>

/// Where the system leaves its crash dumps. A path may lead nowhere.
struct CrashDumpPaths
{
    QString kernelDumpTestPath; ///< the kernel dump, spelled as it is tested; empty: there is none
    QString kernelDump;         ///< the same file, spelled as it is named in archives
    QString minidumps;          ///< folder, searched with its sub-folders
    QString minidumpNamePart;   ///< what a minidump's file name contains, case-sensitive
    /// Minidumps that cannot be read are skipped.
    bool unreadableIsMissing = false;
};

/// Looked up anew at each call. Any thread.
[[nodiscard]] CrashDumpPaths crashDumpPaths();

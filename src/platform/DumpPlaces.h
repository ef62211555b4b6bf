#pragma once

#include <QString>

/// Where the system leaves its crash dumps. A path may lead nowhere.
struct DumpPlaces
{
    QString kernelDumpProbe; ///< the kernel dump, spelled as it is tested; empty: there is none
    QString kernelDump;      ///< the same file, spelled as it is named in archives
    QString smallDumps;      ///< folder, searched with its sub-folders
    QString smallDumpMark;   ///< what a small dump's file name contains, case-sensitive
    /// A small dump that may not be read is passed over, as though it were not there.
    bool unreadableIsMissing = false;
};

/// Looked up anew at each call. Any thread.
[[nodiscard]] DumpPlaces dumpPlaces();

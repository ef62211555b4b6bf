#pragma once

#include "Machine.h"
#include "ScratchFolder.h"
#include "SeededRandom.h"

#include <QFileInfo>

// What the tests of large archives share. Most of their files are sparse, which takes time but no
// disk space.

constexpr qint64 gibibyte = 1 << 30;
constexpr qint64 mostMemory = 64 << 20; // bytes beyond those of an idle program
constexpr const char *notAskedFor =
    "takes up to 7 GB of the disk and some minutes: runs with VANTREL_LARGE=1";
constexpr const char *slowHere = "takes minutes under Wine: runs with VANTREL_LARGE=1";

inline bool isAskedFor()
{
    return times("VANTREL_LARGE", 0) > 0;
}

/// Puts temporary files into memory if all large ones are sparse. There, unlike on a disk, reading
/// them does not fill a cache with zeros, which takes a fifth of the time.
inline void keepSparseFilesInMemory()
{
    if (!onWindows() && !isAskedFor() && QFileInfo("/dev/shm").isWritable())
        qputenv("TMPDIR", "/dev/shm");
}

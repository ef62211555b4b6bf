#pragma once

#include "LineSearch.h"
#include "Machine.h"
#include "ScratchFolder.h"

/// Whether this system has a search that finds anything: a findstr that does nothing, as Wine's, is
/// none. Elsewhere the search is our own and has to work.
inline bool hasSystemSearch()
{
    if (!onWindows())
        return true;
    ScratchFolder folder;
    bool found = false;
    const QString path = folder.file(QStringLiteral("a.log"), "a\n");
    return systemLineSearch("a", path, [&found](const char *) { found = true; }) && found;
}

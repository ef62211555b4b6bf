#include "CrashDumpPaths.h"

CrashDumpPaths crashDumpPaths()
{
    return {QStringLiteral("C:\\Windows\\Memory.dmp"), QStringLiteral("C:/Windows/MEMORY.DMP"),
            QStringLiteral("C:/Windows/Minidumps/"), QStringLiteral(".dmp"), false};
}

#pragma once

#include "ScratchFolder.h"

/// Gives the file called @p name in @p folder a time that no file has had before: who keeps it in
/// memory reads it anew.
void redate(const ScratchFolder &folder, const QString &name);

#pragma once

#include "ScratchFolder.h"

/// Gives the file @p name in @p folder a new unique time, so that caches reload it.
void redate(const ScratchFolder &folder, const QString &name);

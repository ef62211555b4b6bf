#pragma once

#include <QtGlobal>

class QFileInfo;

/// When the contents of @p file changed last, in milliseconds since the start of 1970 (UTC); 0 if
/// the system does not tell. For many files at once: QFileInfo::lastModified() looks up the time
/// zone for each, which on Linux takes longer than asking for the time. Any thread.
[[nodiscard]] qint64 modificationTime(const QFileInfo &file);

#pragma once

#include <QtGlobal>

class QFileInfo;

/// The modification time of @p file in milliseconds since 1970 (UTC); 0 if unknown. Use it for many
/// files: QFileInfo::lastModified() looks up the time zone for each, which on Linux takes longer
/// than the query itself. Any thread.
[[nodiscard]] qint64 modificationTime(const QFileInfo &file);

#pragma once

class QString;

/// Whether the file at @p path can be opened for reading, now; a folder cannot. Any thread.
[[nodiscard]] bool isReadable(const QString &path);

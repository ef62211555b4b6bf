#pragma once

class QString;

/// Writes all events of @p channel, "Application" or "System", to a new file at @p target in the
/// system's lossless format. A channel without events may leave no file. Returns false, and leaves
/// no file, if the channel cannot be exported. May take minutes. Any thread, with or without an
/// event loop.
[[nodiscard]] bool exportEventLog(const QString &channel, const QString &target);

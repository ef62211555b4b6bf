#pragma once

class QString;

/// Writes every event of @p channel, "Application" or "System", to a new file at @p target in the
/// system's own lossless format. A channel that holds no event may leave no file. False: the
/// system refused, or the channel cannot be had; no file is left then. May take minutes. Any
/// thread, with or without an event loop.
[[nodiscard]] bool exportEventLog(const QString &channel, const QString &target);

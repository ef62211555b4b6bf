#pragma once

class QString;

// Files and folders that only their owner can use, whatever the umask. On Windows and on file
// systems without permissions they are ordinary ones. Any thread.

/// Prepares @p path for a caller that then opens it with QIODevice::Truncate. Replaces an existing
/// file by an empty one, so that a process that has the old one open cannot read the new contents.
/// The target of a link, or a file that cannot be replaced, stays and becomes private. Does nothing
/// on Windows. On failure, opening the file reports the reason.
void makePrivateFile(const QString &path);

/// Creates the folder at @p path, whose parent must exist, or makes an existing one private.
/// Returns false if there is no folder afterwards.
[[nodiscard]] bool makePrivateFolder(const QString &path);

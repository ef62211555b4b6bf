#pragma once

class QString;

// Files and folders that only their owner can use, whatever the umask. On Windows and on file
// systems without permissions they are ordinary ones. Any thread.

/// Creates an empty file at @p path for the caller to open. Replaces an existing file, so that a
/// process that has it open cannot read the new contents; truncates the target of a link. On
/// failure, opening the file reports the reason.
void makePrivateFile(const QString &path);

/// Creates the folder at @p path, whose parent must exist, or makes an existing one private.
/// Returns false if there is no folder afterwards.
[[nodiscard]] bool makePrivateFolder(const QString &path);

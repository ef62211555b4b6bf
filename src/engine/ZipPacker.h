#pragma once

#include "ProgressSink.h"

class QString;
class ZipArchive;

/// Packs @p folder and its subfolders into a new zip at @p zipPath, with entry names relative to
/// the folder. Then removes the folder, even if the zip could not be written. Hidden files are
/// neither packed nor removed and keep the folder in place; links to folders are not followed,
/// links to files are packed as files. Always returns true. Any thread.
bool zipFolder(const QString &folder, const QString &zipPath, const ProgressSink &progress = {});

/// Adds the files below @p current to @p archive, with entry names relative to @p root. Each name
/// is printed once its file is packed. Folders get no entries. Always returns true.
bool addFolderToZip(ZipArchive &archive, const QString &current, const QString &root);

/// Removes @p folder and everything in it that is not hidden; links are removed, not followed.
/// Returns false if the path is empty or something remains, true if there is no such folder.
bool removeFolder(const QString &folder);

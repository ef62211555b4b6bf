#pragma once

#include "ProgressSink.h"

class QString;
class ZipArchive;

/// Packs @p folder with its sub-folders into a new zip at @p zipPath, entries named by their paths
/// relative to it, and removes the folder, whether or not the zip could be written. Hidden files
/// are neither packed nor removed, and keep the folder alive. @p progress learns how far the
/// packing is. Always true. Any thread.
bool zipFolder(const QString &folder, const QString &zipPath, const ProgressSink &progress = {});

/// Adds the files below @p current to @p archive, named by their paths relative to @p root; each
/// name is printed once its file is packed. Folders have no entries of their own. Always true.
bool addFolderToZip(ZipArchive &archive, const QString &current, const QString &root);

/// Removes @p folder and all that is not hidden below it. False: the path is empty or something
/// stayed; true also where there was no such folder.
bool removeFolder(const QString &folder);

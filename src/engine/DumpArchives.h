#pragma once

#include "ProgressSink.h"

#include <QStringList>

struct CrashDumpPaths;
class ZipArchive;

/// Adds the file at @p path unless it no longer exists.
void addDump(ZipArchive &archive, const QString &entryName, const QString &path);

/// The paths of the minidumps at @p locations, newest first. Includes folders with matching names.
[[nodiscard]] QStringList minidumps(const CrashDumpPaths &locations);

/// Whether there is a readable kernel dump at @p locations.
[[nodiscard]] bool kernelDumpReadable(const CrashDumpPaths &locations);

/// Writes a zip with the kernel dump, if @p withKernelDump, and the newest minidump. Entry names
/// are full paths. Missing dumps are printed on the debug output.
void writeSystemDumps(const QString &zipPath, const CrashDumpPaths &locations, bool withKernelDump,
                      const ProgressSink &progress = {});

/// Writes a zip with the camera client's dumps in @p folder, without its subfolders. Entry names
/// are file names.
void writeClientDumps(const QString &zipPath, const QString &folder,
                      const ProgressSink &progress = {});

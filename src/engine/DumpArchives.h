#pragma once

#include "ProgressSink.h"

#include <QStringList>

struct CrashDumpPaths;
class ZipArchive;

/// Adds the file at @p path, whole, unless it is gone.
void addDump(ZipArchive &archive, const QString &entryName, const QString &path);

/// The small dumps at @p places by their paths, newest first. Folders of such names are among them.
[[nodiscard]] QStringList minidumps(const CrashDumpPaths &places);

/// Whether there is a kernel dump at @p places that can be read now.
[[nodiscard]] bool kernelDumpReadable(const CrashDumpPaths &places);

/// Writes a zip with the kernel dump, if @p withKernelDump, and the newest small dump, named by
/// their full paths; a missing one is named on the debug output.
void writeSystemDumps(const QString &zipPath, const CrashDumpPaths &places, bool withKernelDump,
                      const ProgressSink &progress = {});

/// Writes a zip with the camera client's dumps in @p folder, not below it, by their bare names.
void writeClientDumps(const QString &zipPath, const QString &folder,
                      const ProgressSink &progress = {});

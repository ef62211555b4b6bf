#pragma once

#include <QString>

// Printed by the worker for missing dumps.
constexpr const char *noKernelDump = "蓝屏日志文件Memory.dmp不存在";
constexpr const char *noSmallDump = "蓝屏日志文件Minidumps不存在";

/// The entry name of the dump at @p path: the reader drops a leading slash.
[[nodiscard]] inline QString entryOf(const QString &path)
{
    return path.startsWith('/') ? path.mid(1) : path;
}

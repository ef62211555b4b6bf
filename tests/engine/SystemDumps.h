#pragma once

#include <QString>

// What the worker prints in place of a dump that is not there.
constexpr const char *noKernelDump = "蓝屏日志文件Memory.dmp不存在";
constexpr const char *noSmallDump = "蓝屏日志文件Minidumps不存在";

/// The entry that stands for the dump at @p path: the reader takes off what an archive must not
/// begin with.
[[nodiscard]] inline QString entryOf(const QString &path)
{
    return path.startsWith(QLatin1Char('/')) ? path.mid(1) : path;
}

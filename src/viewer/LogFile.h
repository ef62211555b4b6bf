#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <string_view>

/// Takes a line and its number, counted from 0. The line is valid during the call only.
using LogLineSink = std::function<void(std::string_view line, int number)>;

/// Hands the first @p maxLines lines of the file at @p path to @p sink, without their line ends (LF
/// or CR LF), each up to its first zero byte. What follows the last line feed is no line yet: its
/// writer may still be at it. Returns the number of lines; nothing: the file cannot be opened.
/// Where memory runs out, in here or in @p sink, the lines end and viewerLog says so.
[[nodiscard]] std::optional<int> readLogFile(const QString &path, int maxLines,
                                             const LogLineSink &sink);

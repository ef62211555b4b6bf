#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <string_view>

/// Receives a line and its number, counted from 0. The line is valid during the call only.
using LogLineSink = std::function<void(std::string_view line, int number)>;

/// Passes the first @p maxLines lines of the file at @p path to @p sink, without line ends (LF or
/// CR LF), each up to its first zero byte. A last line without a line end is left out: it is still
/// being written. Returns the number of lines, or nullopt if the file cannot be opened. If reading
/// fails or memory runs out, also in @p sink, the lines end early and the reason is logged.
[[nodiscard]] std::optional<int> readLogFile(const QString &path, int maxLines,
                                             const LogLineSink &sink);

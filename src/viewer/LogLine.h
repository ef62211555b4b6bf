#pragma once

#include <string_view>

/// The fields of a log line, as views into it.
struct LogLine
{
    /// Whether the line begins with a date, a time and a known level. Otherwise all fields are
    /// empty.
    bool structured = false;
    std::string_view timestamp; ///< date, one blank, time
    std::string_view level;     ///< one of logLevels
    std::string_view source;    ///< the second bracketed field
    std::string_view message;   ///< the rest, with its leading blank, up to a line feed
};

constexpr std::string_view logLevels[] = {"INFO", "DEBUG", "WARN", "ERROR", "FATAL"};

/// Splits @p line: "date time LEVEL [field] [source] message". Exactly one blank separates the
/// first three words. White space before a bracketed field is skipped, and the next character is
/// taken for the bracket, whatever it is. The first bracketed field is ignored; missing fields are
/// empty.
[[nodiscard]] LogLine splitLogLine(std::string_view line);

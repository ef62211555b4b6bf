#pragma once

#include <string_view>

/// The fields of one log line, as parts of the line that they were split from.
struct LogLine
{
    /// The line begins with a date, a time and a known level. Else all fields are empty.
    bool structured = false;
    std::string_view timestamp; ///< date, one blank, time
    std::string_view level;     ///< one of logLevels
    std::string_view source;    ///< the second bracketed field
    std::string_view message;   ///< all behind it, with the leading blank, up to a line feed
};

constexpr std::string_view logLevels[] = {"INFO", "DEBUG", "WARN", "ERROR", "FATAL"};

/// Splits @p line: "date time LEVEL [field] [source] message". The first three words are separated
/// by exactly one blank each; before a bracketed field any white space is skipped, and its first
/// character is taken for the bracket, whatever it is. Fields that are missing are empty.
[[nodiscard]] LogLine splitLogLine(std::string_view line);

#pragma once

#include <string>

/// The fields of a log line by the rule in its plainest form: a stream that is read word by word.
struct StreamedLine
{
    bool structured = false;
    std::string timestamp;
    std::string level;
    std::string source;
    std::string message;
};

[[nodiscard]] StreamedLine readAsStream(const std::string &line);

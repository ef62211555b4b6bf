#pragma once

#include <string>

/// The fields of a log line, read word by word from a stream: the reference implementation.
struct StreamedLine
{
    bool structured = false;
    std::string timestamp;
    std::string level;
    std::string source;
    std::string message;
};

[[nodiscard]] StreamedLine readAsStream(const std::string &line);

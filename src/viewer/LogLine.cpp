#include "LogLine.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::string_view whiteSpace(" \t\n\v\f\r");

/// Removes and returns the text before @p delimiter, which is dropped; without one, everything.
std::string_view takeUntil(std::string_view &rest, char delimiter)
{
    const std::size_t end = rest.find(delimiter);
    const std::string_view taken = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return taken;
}

std::string_view takeBracketed(std::string_view &rest)
{
    const std::size_t bracket = rest.find_first_not_of(whiteSpace);
    rest.remove_prefix(bracket == std::string_view::npos ? rest.size() : bracket + 1);
    return takeUntil(rest, ']');
}

bool isLevel(std::string_view word)
{
    return std::find(std::begin(logLevels), std::end(logLevels), word) != std::end(logLevels);
}

} // namespace

LogLine splitLogLine(std::string_view line)
{
    std::string_view rest = line;
    const std::string_view date = takeUntil(rest, ' ');
    const std::string_view time = takeUntil(rest, ' ');
    const std::string_view level = takeUntil(rest, ' ');
    if (date.empty() || time.empty() || !isLevel(level))
        return {};

    LogLine result;
    result.structured = true;
    result.timestamp = line.substr(0, date.size() + 1 + time.size());
    result.level = level;
    takeBracketed(rest);
    result.source = takeBracketed(rest);
    result.message = takeUntil(rest, '\n');
    return result;
}

#include "LogLevelFile.h"

#include <QBuffer>

#include <array>
#include <string_view>

namespace {

constexpr std::string_view rootMarker = "log4cpp.rootCategory";
constexpr std::string_view categoryMarker = "log4cpp.category.qzsdk";

struct Level
{
    std::string_view name;
    std::string_view rootLine;
    std::string_view categoryLine;
};

// In search order: the first name found in a line decides.
constexpr std::array<Level, 3> levels{{
    {"INFO", "log4cpp.rootCategory = INFO", "log4cpp.category.qzsdk = INFO, a_qzsdk"},
    {"DEBUG", "log4cpp.rootCategory = DEBUG", "log4cpp.category.qzsdk = DEBUG, a_qzsdk"},
    {"FATAL", "log4cpp.rootCategory = FATAL", "log4cpp.category.qzsdk = FATAL, a_qzsdk"},
}};

bool contains(std::string_view line, std::string_view text)
{
    return line.find(text) != std::string_view::npos;
}

/// A line of a file, and whether it has a line end.
struct Line
{
    std::string_view text;
    bool ended = false;
};

Line takeLine(std::string_view &rest)
{
    const size_t end = rest.find('\n');
    std::string_view text = rest.substr(0, end);
    if (end == std::string_view::npos)
        return {text, false};
    rest.remove_prefix(end + 1);
    // QFile's text mode would drop every CR.
    if (!text.empty() && text.back() == '\r')
        text.remove_suffix(1);
    return {text, true};
}

} // namespace

std::optional<int> LogLevelFile::levelNamedIn(std::string_view bytes)
{
    const size_t marker = bytes.find(rootMarker);
    if (marker == std::string_view::npos)
        return std::nullopt;
    // On the first line find_last_of() returns npos, and npos + 1 is 0.
    bytes.remove_prefix(bytes.substr(0, marker).find_last_of('\n') + 1);
    const std::string_view line = bytes.substr(0, bytes.find('\n'));
    for (size_t i = 0; i < levels.size(); ++i) {
        if (contains(line, levels[i].name))
            return int(i);
    }
    return std::nullopt;
}

std::string_view LogLevelFile::platformLineEnd()
{
    static const std::string lineEnd = [] {
        QBuffer text;
        text.open(QIODevice::WriteOnly | QIODevice::Text);
        text.write("\n");
        return text.data().toStdString();
    }();
    return lineEnd;
}

LogLevelFile::Rewritten LogLevelFile::rewritten(std::string_view bytes, int level,
                                                std::string_view lineEnd)
{
    const bool known = level >= 0 && level < int(levels.size());
    const Level written = known ? levels[size_t(level)] : Level();
    Rewritten result;
    result.bytes.reserve(bytes.size() + 256);
    Line line;
    do {
        line = takeLine(bytes);
        const bool isRoot = contains(line.text, rootMarker);
        const bool isCategory = !isRoot && contains(line.text, categoryMarker);
        result.bytes += isRoot ? written.rootLine : isCategory ? written.categoryLine : line.text;
        if (isRoot || isCategory || line.ended)
            result.bytes += lineEnd;
        result.rootReplaced |= isRoot;
        result.categoryReplaced |= isCategory;
    } while (line.ended);
    return result;
}

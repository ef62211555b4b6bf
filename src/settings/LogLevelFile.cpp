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

// In the order in which a line is searched for them: the first name found decides.
constexpr std::array<Level, 3> levels{{
    {"INFO", "log4cpp.rootCategory = INFO", "log4cpp.category.qzsdk = INFO, a_qzsdk"},
    {"DEBUG", "log4cpp.rootCategory = DEBUG", "log4cpp.category.qzsdk = DEBUG, a_qzsdk"},
    {"FATAL", "log4cpp.rootCategory = FATAL", "log4cpp.category.qzsdk = FATAL, a_qzsdk"},
}};

bool contains(std::string_view line, std::string_view text)
{
    return line.find(text) != std::string_view::npos;
}

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), size_t(bytes.size())};
}

void append(QByteArray &text, std::string_view piece)
{
    text.append(piece.data(), int(piece.size()));
}

// Takes the next line, without its line feed, off the front of rest; whether one followed it.
bool takeLine(std::string_view &rest, std::string_view &line)
{
    const size_t end = rest.find('\n');
    line = rest.substr(0, end);
    if (end == std::string_view::npos)
        return false;
    rest.remove_prefix(end + 1);
    return true;
}

} // namespace

std::optional<int> LogLevelFile::levelNamedIn(const QByteArray &text)
{
    std::string_view rest = viewOf(text);
    const size_t marker = rest.find(rootMarker);
    if (marker == std::string_view::npos)
        return std::nullopt;
    // find_last_of gives npos, and so 0 here, when the marker is on the first line.
    rest.remove_prefix(rest.substr(0, marker).find_last_of('\n') + 1);
    const std::string_view line = rest.substr(0, rest.find('\n'));
    for (size_t i = 0; i < levels.size(); ++i) {
        if (contains(line, levels[i].name))
            return int(i);
    }
    return std::nullopt;
}

LogLevelFile::Rewritten LogLevelFile::rewritten(const QByteArray &text, int level)
{
    const bool known = level >= 0 && level < int(levels.size());
    const Level written = known ? levels[size_t(level)] : Level();
    Rewritten result;
    result.text.reserve(text.size() + 256);
    std::string_view rest = viewOf(text);
    std::string_view line;
    bool more = true;
    while (more) {
        more = takeLine(rest, line);
        if (contains(line, rootMarker)) {
            append(result.text, written.rootLine);
            result.text.append('\n');
            result.rootReplaced = true;
        } else if (contains(line, categoryMarker)) {
            append(result.text, written.categoryLine);
            result.text.append('\n');
            result.categoryReplaced = true;
        } else {
            append(result.text, line);
            if (more)
                result.text.append('\n');
        }
    }
    return result;
}

QByteArray LogLevelFile::withLineFeeds(const QByteArray &bytes)
{
    // Not left to the text mode of QFile, which drops every CR.
    QByteArray text = bytes;
    return text.replace("\r\n", "\n");
}

QByteArray LogLevelFile::withPlatformLineEnds(const QByteArray &text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly | QIODevice::Text);
    buffer.write(text);
    return bytes;
}

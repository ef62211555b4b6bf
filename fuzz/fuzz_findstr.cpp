// findstr expressions, translated and matched, compared with a simple exhaustive matcher. The first
// line of an input is the keyword, the rest is the text. After a leading zero byte, bytes stand for
// pieces that are likely to be meaningful.
#include "Fuzz.h"
#include "LineBlockReader.h"
#include "LineFilter.h"
#include "LineSearch.h"
#include "MemoryFile.h"
#include "SlowFindstr.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace {

constexpr std::size_t pieceBytes = 511;

/// The lines of @p text, including line feeds.
std::vector<std::string_view> linesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::size_t size = end == std::string_view::npos ? text.size() : end + 1;
        lines.push_back(text.substr(0, size));
        text.remove_prefix(size);
    }
    return lines;
}

std::string_view content(std::string_view line)
{
    if (line.back() == '\n')
        line.remove_suffix(1);
    return line;
}

std::vector<std::string_view> filtered(const std::string &keyword, std::string_view text)
{
    const LineFilter filter(keyword);
    demand(filter.isValid(), "an expression of this length is searched for");
    std::vector<std::string_view> lines;
    filter.forEachLine(text, [&lines](std::string_view line) { lines.push_back(line); });
    return lines;
}

/// The pieces that a search returns for @p lines, each up to its first zero byte.
std::vector<std::string> piecesOf(const std::vector<std::string_view> &lines)
{
    std::vector<std::string> pieces;
    for (std::string_view line : lines) {
        for (; !line.empty(); line.remove_prefix(std::min(pieceBytes, line.size()))) {
            const std::string_view piece = line.substr(0, pieceBytes);
            pieces.emplace_back(piece.substr(0, piece.find('\0')));
        }
    }
    return pieces;
}

std::string decoded(std::string_view input)
{
    static const char *const pieces[] = {
        "a",      "b",  "a",     "b",    "x",    "_",     "-",      ".",   "*",    "*",
        ".*",     "^",  "$",     "[ab]", "[^a]", "[a-x]", "[]",     "[^]", "[^-]", "[-a]",
        "[a\\]]", "[",  "]",     "\\<",  "\\>",  "\\.",   "\\*",    "\\",  " ",    "[^b]*",
        "a*",     "b*", "[ab]*", "\xc3", "\xa4", "\r",    "[b-x]*x"};
    static const std::string bytes("aaabbbxx_-.*^$[]\\ \xc3\xa4\r\n\n\n", 25);
    std::string text;
    bool inKeyword = true;
    for (const char c : input) {
        const auto code = static_cast<unsigned char>(c);
        if (!inKeyword) {
            text += bytes[code % bytes.size()];
        } else if (c == '\n') {
            text += c;
            inKeyword = false;
        } else {
            text += pieces[code % std::size(pieces)];
        }
    }
    return text;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    std::string input(reinterpret_cast<const char *>(data), size);
    if (size > 0 && data[0] == 0)
        input = decoded(std::string_view(input).substr(1));
    const std::size_t end = input.find('\n');
    if (end == std::string::npos)
        return 0;
    const std::string keyword = input.substr(0, end);
    const std::string raw = input.substr(end + 1);
    std::string text = raw;
    text.resize(unifyLineEnds(text.data(), text.size()));

    std::vector<std::string_view> expected;
    for (const std::string_view line : linesOf(text)) {
        if (slowFindstrMatches(keyword, content(line)))
            expected.push_back(line);
    }
    demand(filtered(keyword, text) == expected, "the filter finds the same lines");

    const MemoryFile file(QByteArray::fromStdString(raw));
    std::vector<std::string> pieces;
    const bool searched = systemLineSearch(
        keyword, file.path(), [&pieces](const char *piece) { pieces.emplace_back(piece); });
    demand(searched && pieces == piecesOf(expected), "the search hands out the same lines");
    return 0;
}

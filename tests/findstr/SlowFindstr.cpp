#include "SlowFindstr.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <vector>

namespace {

/// Matches one expression on one line; positions are indexes into both.
class Trial
{
public:
    Trial(std::string_view expression, std::string_view subject)
        : pattern(expression)
        , line(subject)
        , failed((pattern.size() + 1) * (line.size() + 1))
    {
    }

    [[nodiscard]] bool matchesFrom(std::size_t at, std::size_t pos);
    [[nodiscard]] bool everyClassEnds() const;

private:
    [[nodiscard]] bool tryToMatch(std::size_t at, std::size_t pos);
    [[nodiscard]] bool isWord(std::size_t pos) const
    {
        return pos < line.size() &&
               (std::isalnum(static_cast<unsigned char>(line[pos])) != 0 || line[pos] == '_');
    }
    [[nodiscard]] bool isBorder(char kind, std::size_t pos) const
    {
        const bool before = pos > 0 && isWord(pos - 1);
        return kind == '<' ? !before && isWord(pos) : before && !isWord(pos);
    }
    [[nodiscard]] std::size_t atomEnd(std::size_t at) const;
    [[nodiscard]] bool accepts(std::size_t at, char c) const;
    [[nodiscard]] bool classAccepts(std::size_t at, char c) const;

    std::string_view pattern;
    std::string_view line;
    std::vector<bool> failed; ///< pairs of positions known not to match
};

/// The position after the character, escape or class at @p at; 0 if the class is unterminated.
std::size_t Trial::atomEnd(std::size_t at) const
{
    if (pattern[at] == '\\')
        return at + 1 < pattern.size() ? at + 2 : at + 1;
    if (pattern[at] != '[')
        return at + 1;
    for (std::size_t i = at + 1; i < pattern.size(); ++i) {
        if (pattern[i] == ']')
            return i + 1;
        if (pattern[i] == '\\' && i + 1 < pattern.size())
            ++i;
    }
    return 0;
}

bool Trial::everyClassEnds() const
{
    for (std::size_t at = 0; at < pattern.size();) {
        at = atomEnd(at);
        if (at == 0)
            return false;
    }
    return true;
}

bool Trial::accepts(std::size_t at, char c) const
{
    switch (pattern[at]) {
    case '.':
        return true;
    case '[':
        return classAccepts(at, c);
    case '\\':
        return at + 1 < pattern.size() ? pattern[at + 1] == c : c == '\\';
    default:
        return pattern[at] == c;
    }
}

bool Trial::classAccepts(std::size_t at, char c) const
{
    const std::size_t end = atomEnd(at) - 1;
    std::size_t i = at + 1;
    const bool negated = pattern[i] == '^';
    if (negated)
        ++i;
    bool found = false;
    while (i < end) {
        if (pattern[i] == '\\')
            ++i;
        const auto low = static_cast<unsigned char>(pattern[i]);
        unsigned char high = low;
        ++i;
        if (i + 1 < end && pattern[i] == '-') {
            ++i;
            if (pattern[i] == '\\')
                ++i;
            high = static_cast<unsigned char>(pattern[i]);
            ++i;
        }
        const auto byte = static_cast<unsigned char>(c);
        found = found || (low <= byte && byte <= high);
    }
    return found != negated;
}

bool Trial::matchesFrom(std::size_t at, std::size_t pos)
{
    const std::size_t place = at * (line.size() + 1) + pos;
    if (failed[place])
        return false;
    const bool matches = tryToMatch(at, pos);
    failed[place] = !matches;
    return matches;
}

bool Trial::tryToMatch(std::size_t at, std::size_t pos)
{
    if (at == pattern.size())
        return true;
    if (at == 0 && pattern[at] == '^')
        return pos == 0 && matchesFrom(1, pos);
    if (pattern[at] == '$' && at + 1 == pattern.size())
        return pos == line.size();
    if (pattern[at] == '\\' && at + 1 < pattern.size() &&
        (pattern[at + 1] == '<' || pattern[at + 1] == '>')) {
        const std::size_t behind = at + 2;
        if (!isBorder(pattern[at + 1], pos))
            return false;
        return matchesFrom(behind, pos);
    }
    std::size_t behind = atomEnd(at);
    if (behind == pattern.size() || pattern[behind] != '*')
        return pos < line.size() && accepts(at, line[pos]) && matchesFrom(behind, pos + 1);
    while (behind < pattern.size() && pattern[behind] == '*')
        ++behind;
    for (;; ++pos) {
        if (matchesFrom(behind, pos))
            return true;
        if (pos == line.size() || !accepts(at, line[pos]))
            return false;
    }
}

bool expressionMatches(std::string_view expression, std::string_view line)
{
    Trial trial(expression, line);
    if (!trial.everyClassEnds())
        return false;
    for (std::size_t pos = 0; pos <= line.size(); ++pos) {
        if (trial.matchesFrom(0, pos))
            return true;
    }
    return false;
}

} // namespace

bool slowFindstrMatches(std::string_view keyword, std::string_view line)
{
    std::size_t at = 0;
    while (at < keyword.size()) {
        const std::size_t end = std::min(keyword.find(' ', at), keyword.size());
        if (end > at && expressionMatches(keyword.substr(at, end - at), line))
            return true;
        at = end + 1;
    }
    return false;
}

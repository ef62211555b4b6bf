#include "LineFilter.h"

#include "FindstrPattern.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

std::string_view lineAround(std::string_view text, std::size_t from, std::size_t place)
{
    const void *const before = memrchr(text.data() + from, '\n', place - from);
    const char *const start =
        before != nullptr ? static_cast<const char *>(before) + 1 : text.data() + from;
    const void *const behind = std::memchr(text.data() + place, '\n', text.size() - place);
    const char *const end =
        behind != nullptr ? static_cast<const char *>(behind) + 1 : text.data() + text.size();
    return {start, static_cast<std::size_t>(end - start)};
}

std::string_view content(std::string_view line)
{
    if (line.back() == '\n')
        line.remove_suffix(1);
    return line;
}

bool isRare(const FindstrItem &item)
{
    constexpr std::size_t fewBytes = 4;
    return item.kind == FindstrItem::Kind::Byte && item.bytes.count() <= fewBytes;
}

/// The pattern can leap from line to line: it begins with two bytes together that are seldom so,
/// or has nothing to repeat. Otherwise the automaton is faster, which looks at every byte.
bool leaps(const FindstrExpression &expression)
{
    const auto &items = expression.items;
    const auto gap = std::find_if(items.begin(), items.end(),
                                  [](const FindstrItem &item) { return item.repeated; });
    const auto pair = std::adjacent_find(
        items.begin(), gap, [](const auto &a, const auto &b) { return isRare(a) && isRare(b); });
    return gap == items.end() || pair != gap;
}

} // namespace

LineFilter::LineFilter(std::string_view keyword, PatternFinder::Use use)
{
    for (FindstrExpression &parsed : parseFindstr(keyword)) {
        const FindstrExpression expression = simplified(std::move(parsed));
        const FindstrPattern pattern = toPattern(expression);
        searches.push_back({PatternFinder(pattern.text, use),
                            FindstrAutomaton(expression),
                            FindstrMatcher(expression),
                            pattern.exact,
                            leaps(expression),
                            {}});
    }
}

std::string_view LineFilter::nextLine(std::string_view text, std::size_t from)
{
    std::string_view first;
    for (Search &search : searches) {
        const bool isPast = !search.line.empty() && search.line.data() < text.data() + from;
        if (fresh || isPast)
            search.advance(text, from);
        if (first.empty() || (!search.line.empty() && search.line.data() < first.data()))
            first = search.line;
    }
    fresh = false;
    return first;
}

void LineFilter::Search::advance(std::string_view text, std::size_t from)
{
    line = {};
    const bool byPattern = exact && leaping;
    if (!byPattern)
        line = lineByAutomaton(text, from);
    if (byPattern || !automaton.isUsable())
        line = lineByPattern(text, from);
}

std::string_view LineFilter::Search::lineByAutomaton(std::string_view text, std::size_t from)
{
    const std::size_t place = automaton.find(text, from);
    return place != std::string_view::npos ? lineAround(text, from, place) : std::string_view();
}

std::string_view LineFilter::Search::lineByPattern(std::string_view text, std::size_t from)
{
    while (from < text.size()) {
        const std::size_t place = finder.find(text, from);
        const bool isBehindLastLine = place == text.size() && text.back() == '\n';
        if (place == std::string_view::npos || isBehindLastLine)
            break;
        const std::string_view candidate = lineAround(text, from, place);
        // The pattern finds more than the expression, so nothing can match before its place.
        const char *const found = text.data() + place;
        if (accepts(candidate, static_cast<std::size_t>(found - candidate.data())))
            return candidate;
        from = static_cast<std::size_t>(candidate.data() - text.data()) + candidate.size();
    }
    return {};
}

bool LineFilter::Search::accepts(std::string_view candidate, std::size_t from)
{
    return (exact && finder.isUsable()) || matcher.matches(content(candidate), from);
}

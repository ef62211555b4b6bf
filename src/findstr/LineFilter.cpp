#include "LineFilter.h"

#include "FindstrRegex.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

constexpr std::int64_t memoryLimit = 64 << 20; // bytes per expression

std::unique_ptr<RE2> compiled(const FindstrExpression &expression)
{
    RE2::Options options;
    options.set_encoding(RE2::Options::EncodingLatin1);
    options.set_max_mem(memoryLimit);
    options.set_log_errors(false);
    return std::make_unique<RE2>(toRegex(expression), options);
}

FindstrExpression withoutBorders(FindstrExpression expression)
{
    auto &items = expression.items;
    const auto isBorder = [](const FindstrItem &item) {
        return item.kind != FindstrItem::Kind::Byte;
    };
    items.erase(std::remove_if(items.begin(), items.end(), isBorder), items.end());
    return expression;
}

/// Position of the first match in @p text, or npos.
std::size_t find(const RE2 &regex, std::string_view text)
{
    re2::StringPiece match;
    if (!regex.Match({text.data(), text.size()}, 0, text.size(), RE2::UNANCHORED, &match, 1))
        return std::string_view::npos;
    return static_cast<std::size_t>(match.data() - text.data());
}

/// The line of @p text at @p place, with its line feed. Empty after the last line feed.
std::string_view lineAround(std::string_view text, std::size_t place)
{
    const std::size_t start = text.substr(0, place).rfind('\n') + 1; // npos + 1 is 0
    const std::size_t end = std::min(text.find('\n', place), text.size() - 1) + 1;
    return text.substr(start, end - start);
}

std::string_view after(std::string_view text, std::string_view line)
{
    return text.substr(static_cast<std::size_t>(line.data() - text.data()) + line.size());
}

} // namespace

LineFilter::LineFilter(std::string_view keyword)
{
    for (const FindstrExpression &expression : parseFindstr(keyword)) {
        const FindstrExpression bare = withoutBorders(expression);
        const bool hasBorders = bare.items.size() < expression.items.size();
        searches.push_back({compiled(bare), hasBorders ? compiled(expression) : nullptr});
    }
}

bool LineFilter::isValid() const
{
    return std::all_of(searches.begin(), searches.end(), [](const Search &search) {
        return search.prefilter->ok() && (!search.exact || search.exact->ok());
    });
}

void LineFilter::forEachLine(std::string_view text,
                             const std::function<void(std::string_view line)> &found) const
{
    std::vector<std::string_view> next; // next line of each search; empty at its end
    for (const Search &search : searches)
        next.push_back(search.firstLine(text));
    for (;;) {
        std::string_view first;
        for (const std::string_view line : next) {
            if (first.empty() || (!line.empty() && line.data() < first.data()))
                first = line;
        }
        if (first.empty())
            return;
        found(first);
        for (std::size_t i = 0; i < next.size(); ++i) {
            if (next[i].data() == first.data())
                next[i] = searches[i].firstLine(after(text, first));
        }
    }
}

std::string_view LineFilter::Search::firstLine(std::string_view text) const
{
    while (!text.empty()) {
        const std::size_t place = find(*prefilter, text);
        if (place == std::string_view::npos)
            break;
        const std::string_view line = lineAround(text, place);
        if (!exact || find(*exact, line) != std::string_view::npos)
            return line;
        text = after(text, line);
    }
    return {};
}

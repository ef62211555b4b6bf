#include "FindstrMatcher.h"

#include <algorithm>

namespace {

using Kind = FindstrItem::Kind;

constexpr std::size_t wordBits = 64;

void setBit(std::vector<std::uint64_t> &words, std::size_t bit)
{
    words[bit / wordBits] |= std::uint64_t{1} << (bit % wordBits);
}

/// The border of a word between two bytes; Kind::Byte: none.
std::size_t borderBetween(bool wordBefore, bool wordBehind)
{
    if (wordBefore == wordBehind)
        return static_cast<std::size_t>(Kind::Byte);
    return static_cast<std::size_t>(wordBehind ? Kind::WordStart : Kind::WordEnd);
}

} // namespace

FindstrMatcher::FindstrMatcher(const FindstrExpression &expression)
    : wordCount(expression.items.size() / wordBits + 1)
    , finalPlace(expression.items.size())
    , atLineStart(expression.atLineStart)
    , atLineEnd(expression.atLineEnd)
    , hasBorders(std::any_of(expression.items.begin(), expression.items.end(),
                             [](const FindstrItem &item) { return item.kind != Kind::Byte; }))
    , accepting(256 * wordCount)
    , repeated(wordCount)
    , skips{skipsFor(expression, Kind::Byte), skipsFor(expression, Kind::WordStart),
            skipsFor(expression, Kind::WordEnd)}
    , reached(wordCount)
{
    for (std::size_t place = 0; place < finalPlace; ++place) {
        const FindstrItem &item = expression.items[place];
        if (item.repeated)
            setBit(repeated, place);
        for (std::size_t byte = 0; byte < item.bytes.size(); ++byte) {
            if (item.bytes[byte])
                setBit(accepting, byte * wordCount * wordBits + place);
        }
    }
}

FindstrMatcher::Skips FindstrMatcher::skipsFor(const FindstrExpression &expression,
                                               Kind border) const
{
    Skips result{Words(wordCount), Words(wordCount), Words(wordCount)};
    bool inRun = false;
    for (std::size_t place = 0; place <= finalPlace; ++place) {
        const bool optional = place < finalPlace &&
                              (expression.items[place].repeated ||
                               (border != Kind::Byte && expression.items[place].kind == border));
        if (inRun)
            setBit(result.reachable, place);
        if (optional && !inRun)
            setBit(result.starts, place);
        if (!optional && inRun)
            setBit(result.ends, place);
        inRun = optional;
    }
    return result;
}

bool FindstrMatcher::matches(std::string_view line, std::size_t from)
{
    // Nearly every expression fits one word, which then stays in a register.
    return hasOneWord() ? matchesOneWord(line, from) : matchesManyWords(line, from);
}

bool FindstrMatcher::matchesOneWord(std::string_view line, std::size_t from) const
{
    std::uint64_t places = from == 0 || !atLineStart ? firstPlaces() : 0;
    for (std::size_t pos = from; pos < line.size(); ++pos) {
        if (isComplete(places, false))
            return true;
        places = nextPlaces(places, static_cast<unsigned char>(line[pos]));
    }
    return isComplete(places, true);
}

bool FindstrMatcher::matchesManyWords(std::string_view line, std::size_t from)
{
    reached.assign(wordCount, 0);
    bool wordBefore = from > 0 && isWordByte(static_cast<unsigned char>(line[from - 1]));
    for (std::size_t pos = from;; ++pos) {
        const bool atEnd = pos == line.size();
        const auto byte = static_cast<unsigned char>(atEnd ? '\0' : line[pos]);
        const bool wordBehind = !atEnd && isWordByte(byte);
        if (pos == 0 || !atLineStart)
            setBit(reached, 0);
        skip(skips[borderBetween(wordBefore, wordBehind)]);
        if (isComplete() && (atEnd || !atLineEnd))
            return true;
        if (atEnd)
            return false;
        consume(byte);
        wordBefore = wordBehind;
    }
}

std::uint64_t FindstrMatcher::nextPlaces(std::uint64_t places, unsigned char byte) const
{
    const std::uint64_t taken = places & accepting[byte];
    const std::uint64_t staying = repeated.front();
    const std::uint64_t anew = atLineStart ? 0 : 1;
    return skipped((taken & staying) | ((taken & ~staying) << 1) | anew);
}

bool FindstrMatcher::isComplete(std::uint64_t places, bool atEnd) const
{
    return ((places >> finalPlace) & 1) != 0 && (atEnd || !atLineEnd);
}

std::uint64_t FindstrMatcher::skipped(std::uint64_t places) const
{
    const Skips &allowed = skips[static_cast<std::size_t>(Kind::Byte)];
    const std::uint64_t marked = places | allowed.ends.front();
    return places | (allowed.reachable.front() & (~(marked - allowed.starts.front()) ^ marked));
}

void FindstrMatcher::skip(const Skips &allowed)
{
    std::uint64_t borrow = 0;
    for (std::size_t i = 0; i < wordCount; ++i) {
        const std::uint64_t from = reached[i] | allowed.ends[i];
        const std::uint64_t less = from - allowed.starts[i];
        const std::uint64_t difference = less - borrow;
        borrow = (less > from || difference > less) ? 1 : 0;
        reached[i] |= allowed.reachable[i] & (~difference ^ from);
    }
}

void FindstrMatcher::consume(unsigned char byte)
{
    const std::uint64_t *const accepted = &accepting[byte * wordCount];
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i < wordCount; ++i) {
        const std::uint64_t taken = reached[i] & accepted[i];
        const std::uint64_t moving = taken & ~repeated[i];
        reached[i] = (taken & repeated[i]) | (moving << 1) | carry;
        carry = moving >> (wordBits - 1);
    }
}

bool FindstrMatcher::isComplete() const
{
    return ((reached[finalPlace / wordBits] >> (finalPlace % wordBits)) & 1) != 0;
}

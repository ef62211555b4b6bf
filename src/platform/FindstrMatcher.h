#pragma once

#include "FindstrExpression.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

/// Tells whether a line matches an expression. Follows all ways through the expression at once, 64
/// places in a machine word: time grows with the length of the line times that of the expression,
/// whatever they hold.
class FindstrMatcher
{
public:
    explicit FindstrMatcher(const FindstrExpression &expression);

    /// @p line without its line end. No match is looked for that begins before @p from. Not for two
    /// threads at once.
    [[nodiscard]] bool matches(std::string_view line, std::size_t from = 0);

    /// The expression fits one machine word and has no borders of words: what follows may be
    /// called. A word is a set of places that are reached, the ones that need no further byte
    /// included.
    [[nodiscard]] bool hasOneWord() const { return wordCount == 1 && !hasBorders; }
    [[nodiscard]] std::uint64_t firstPlaces() const { return skipped(1); }
    [[nodiscard]] std::uint64_t nextPlaces(std::uint64_t places, unsigned char byte) const;
    /// Whether a line matches that has led to @p places, at its end or wherever it goes on.
    [[nodiscard]] bool isComplete(std::uint64_t places, bool atEnd) const;

private:
    using Words = std::vector<std::uint64_t>;

    /// Which places may be passed without a byte, as runs of neighbours: the carry of one
    /// subtraction runs from the first reached place of each run to the run's end.
    struct Skips
    {
        Words starts;
        Words ends;
        Words reachable;
    };

    [[nodiscard]] Skips skipsFor(const FindstrExpression &expression,
                                 FindstrItem::Kind border) const;
    [[nodiscard]] bool matchesOneWord(std::string_view line, std::size_t from) const;
    [[nodiscard]] bool matchesManyWords(std::string_view line, std::size_t from);
    [[nodiscard]] std::uint64_t skipped(std::uint64_t places) const;
    void skip(const Skips &skips);
    void consume(unsigned char byte);
    [[nodiscard]] bool isComplete() const;

    std::size_t wordCount;
    std::size_t finalPlace;
    bool atLineStart;
    bool atLineEnd;
    bool hasBorders;
    Words accepting; ///< for each byte, the places that accept it
    Words repeated;
    std::array<Skips, 3> skips; ///< by FindstrItem::Kind of the border between two bytes
    Words reached;
};

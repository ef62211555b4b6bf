#pragma once

#include "FindstrAutomaton.h"
#include "FindstrMatcher.h"
#include "PatternFinder.h"

#include <cstddef>
#include <string_view>
#include <vector>

/// Finds the lines of a text that a findstr keyword selects.
class LineFilter
{
public:
    explicit LineFilter(std::string_view keyword,
                        PatternFinder::Use use = PatternFinder::Use::MachineCode);

    /// No line can match: the keyword holds no expression that could.
    [[nodiscard]] bool matchesNothing() const { return searches.empty(); }

    /// Calls @p found with each matching line of @p text, its line feed included. @p text is made
    /// of whole lines; only the last one may lack its line feed.
    template <typename Found>
    void forEachLine(std::string_view text, const Found &found)
    {
        fresh = true;
        for (std::size_t from = 0; from < text.size();) {
            const std::string_view line = nextLine(text, from);
            if (line.empty())
                return;
            found(line);
            from = static_cast<std::size_t>(line.data() - text.data()) + line.size();
        }
    }

private:
    /// One of the keyword's expressions. Its pattern leads to lines, or its automaton where the
    /// pattern is not exact or not fast. Where there is no automaton the matcher judges the lines
    /// that an inexact pattern finds.
    struct Search
    {
        PatternFinder finder;
        FindstrAutomaton automaton;
        FindstrMatcher matcher;
        bool exact;            ///< the pattern finds no line that does not match
        bool leaping;          ///< the pattern is the fastest way
        std::string_view line; ///< the next one in the text at hand; empty: none is left

        void advance(std::string_view text, std::size_t from);
        [[nodiscard]] std::string_view lineByAutomaton(std::string_view text, std::size_t from);
        [[nodiscard]] std::string_view lineByPattern(std::string_view text, std::size_t from);
        [[nodiscard]] bool accepts(std::string_view candidate, std::size_t from);
    };

    [[nodiscard]] std::string_view nextLine(std::string_view text, std::size_t from);

    std::vector<Search> searches;
    bool fresh = true; ///< no search has looked at the text at hand yet
};

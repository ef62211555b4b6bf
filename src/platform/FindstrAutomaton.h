#pragma once

#include "FindstrMatcher.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Finds the lines that match an expression by a table of states, one step a byte. The table grows
/// with what the lines hold; an expression that would need a large one is given up.
class FindstrAutomaton
{
public:
    explicit FindstrAutomaton(const FindstrExpression &expression);

    /// False: find() is of no use, the expression being too long, with borders of words, or one
    /// with too many states. May become so in find().
    [[nodiscard]] bool isUsable() const { return usable; }

    /// A place in the first line of @p text, from the line's start at @p from on, that matches;
    /// npos: there is none, or the automaton is not usable any more. @p text is made of whole
    /// lines; only the last one may lack its line feed.
    [[nodiscard]] std::size_t find(std::string_view text, std::size_t from);

private:
    using State = std::uint16_t;

    [[nodiscard]] State step(State state, unsigned char byte);
    [[nodiscard]] State stateOf(std::uint64_t places);

    FindstrMatcher matcher;
    bool usable;
    std::vector<std::uint64_t> placesOf; ///< by state
    std::vector<State> next;             ///< by state and byte
    std::unordered_map<std::uint64_t, State> known;
};

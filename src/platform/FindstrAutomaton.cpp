#include "FindstrAutomaton.h"

namespace {

constexpr std::size_t bytes = 256;
constexpr std::size_t maxStates = 1000; ///< half a megabyte of table
constexpr std::uint16_t unknown = 0xffff;
constexpr std::uint16_t matched = 0xfffe;

} // namespace

FindstrAutomaton::FindstrAutomaton(const FindstrExpression &expression)
    : matcher(expression)
    , usable(matcher.hasOneWord())
{
    if (usable)
        (void)stateOf(matcher.firstPlaces()); // becomes state 0
}

std::size_t FindstrAutomaton::find(std::string_view text, std::size_t from)
{
    if (!usable || from == text.size())
        return std::string_view::npos;
    if (matcher.isComplete(placesOf[0], false))
        return from;
    State state = 0;
    for (std::size_t pos = from;; ++pos) {
        // Most bytes leave a state as it is: to see that is faster than to follow the table.
        const State *const row = &next[state * bytes];
        while (pos < text.size() && row[static_cast<unsigned char>(text[pos])] == state)
            ++pos;
        if (pos == text.size())
            break;
        const auto byte = static_cast<unsigned char>(text[pos]);
        const State to = row[byte] != unknown ? row[byte] : step(state, byte);
        if (to == matched)
            return pos;
        if (to == unknown)
            return std::string_view::npos;
        state = to;
    }
    const bool matchesAtEnd = text.back() != '\n' && matcher.isComplete(placesOf[state], true);
    return matchesAtEnd ? text.size() - 1 : std::string_view::npos;
}

FindstrAutomaton::State FindstrAutomaton::step(State state, unsigned char byte)
{
    State to = 0; // the next line begins
    const std::uint64_t places = placesOf[state];
    if (byte == '\n') {
        if (matcher.isComplete(places, true))
            to = matched;
    } else {
        const std::uint64_t reached = matcher.nextPlaces(places, byte);
        to = matcher.isComplete(reached, false) ? matched : stateOf(reached);
    }
    if (to != unknown)
        next[state * bytes + byte] = to;
    return to;
}

FindstrAutomaton::State FindstrAutomaton::stateOf(std::uint64_t places)
{
    const auto [found, isNew] = known.try_emplace(places, static_cast<State>(placesOf.size()));
    if (isNew) {
        if (placesOf.size() == maxStates) {
            usable = false;
            return unknown;
        }
        placesOf.push_back(places);
        next.resize(next.size() + bytes, unknown);
    }
    return found->second;
}

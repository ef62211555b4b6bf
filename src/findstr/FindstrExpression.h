#pragma once

#include <bitset>
#include <string_view>
#include <vector>

/// The bytes that one item of an expression accepts, never a line feed.
using ByteSet = std::bitset<256>;

/// One item of an expression: a byte from a set, or a word border, which has no width.
struct FindstrItem
{
    enum class Kind { Byte, WordStart, WordEnd };
    Kind kind = Kind::Byte;
    ByteSet bytes;         ///< for Kind::Byte
    bool repeated = false; ///< zero or more such bytes; for Kind::Byte
};

/// An expression to search for in a line without its line end; matches anywhere unless anchored.
struct FindstrExpression
{
    bool atLineStart = false;
    bool atLineEnd = false;
    std::vector<FindstrItem> items;
};

/// Parses @p keyword: findstr regular expressions separated by blanks, any of which may match. An
/// expression that cannot match (an unterminated class) is left out. Expressions match bytes; ASCII
/// letters, digits and "_" form words. A "*" with nothing to repeat is literal.
[[nodiscard]] std::vector<FindstrExpression> parseFindstr(std::string_view keyword);

/// All bytes except the line feed.
[[nodiscard]] ByteSet anyByte();

/// ASCII letters, digits and "_".
[[nodiscard]] ByteSet wordBytes();

#pragma once

#include <bitset>
#include <string_view>
#include <vector>

/// The bytes that one place of an expression accepts. Never holds the line feed.
using ByteSet = std::bitset<256>;

/// One place of an expression: a byte out of a set, or the border of a word, which has no width.
struct FindstrItem
{
    enum class Kind { Byte, WordStart, WordEnd };
    Kind kind = Kind::Byte;
    ByteSet bytes;         ///< for Kind::Byte
    bool repeated = false; ///< any number of such bytes, none included; for Kind::Byte
};

/// What is searched in a line without its line end, anywhere in it unless it is anchored.
struct FindstrExpression
{
    bool atLineStart = false;
    bool atLineEnd = false;
    std::vector<FindstrItem> items;
};

/// Reads @p keyword, findstr regular expressions separated by blanks, any of which may match. An
/// expression that can match nothing (an unterminated class) is left out. Bytes are compared, not
/// letters; letters, digits and "_" of ASCII make words. A "*" that has nothing to repeat is plain.
[[nodiscard]] std::vector<FindstrExpression> parseFindstr(std::string_view keyword);

/// Every byte that can stand in a line.
[[nodiscard]] ByteSet anyByte();

/// The bytes that words are made of.
[[nodiscard]] ByteSet wordBytes();

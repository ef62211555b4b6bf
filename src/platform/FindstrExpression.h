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

/// An expression that matches the same lines with as few repetitions as can be had cheaply: what
/// may be missing at an open end of the expression need not be looked for.
[[nodiscard]] FindstrExpression simplified(FindstrExpression expression);

/// Every byte that can stand in a line.
[[nodiscard]] ByteSet anyByte();

/// Whether @p byte belongs to a word.
[[nodiscard]] bool isWordByte(unsigned char byte);

#include "FindstrPattern.h"

#include <algorithm>
#include <vector>

namespace {

std::string escaped(unsigned byte)
{
    static constexpr char digits[] = "0123456789abcdef";
    if (isWordByte(static_cast<unsigned char>(byte)))
        return std::string(1, static_cast<char>(byte));
    return {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
}

std::string classOf(const ByteSet &bytes)
{
    std::string text = "[";
    for (unsigned first = 0; first < bytes.size(); ++first) {
        if (!bytes[first])
            continue;
        unsigned last = first;
        while (last + 1 < bytes.size() && bytes[last + 1])
            ++last;
        text += escaped(first);
        if (last > first)
            text += (last > first + 1 ? "-" : "") + escaped(last);
        first = last;
    }
    return text + "]";
}

std::string oneByte(const ByteSet &bytes)
{
    if (bytes.none())
        return "(?!)";
    if (bytes == anyByte())
        return "[^\\n]";
    if (bytes.count() > 1)
        return classOf(bytes);
    unsigned byte = 0;
    while (!bytes[byte])
        ++byte;
    return escaped(byte);
}

std::string oneItem(const FindstrItem &item)
{
    switch (item.kind) {
    case FindstrItem::Kind::WordStart:
        return "\\b(?=\\w)";
    case FindstrItem::Kind::WordEnd:
        return "\\b(?<=\\w)";
    case FindstrItem::Kind::Byte:
        break;
    }
    return oneByte(item.bytes);
}

/// What stands between the repetitions: parts of a fixed length each.
std::vector<std::string> fixedParts(const FindstrExpression &expression)
{
    std::vector<std::string> parts(1);
    for (const FindstrItem &item : expression.items) {
        if (item.repeated)
            parts.emplace_back();
        else
            parts.back() += oneItem(item);
    }
    return parts;
}

} // namespace

FindstrPattern toPattern(const FindstrExpression &expression)
{
    const auto isWidened = [](const FindstrItem &item) {
        return item.repeated && item.bytes != anyByte();
    };
    FindstrPattern pattern;
    pattern.exact = std::none_of(expression.items.begin(), expression.items.end(), isWidened);

    std::vector<std::string> parts = fixedParts(expression);
    if (expression.atLineStart)
        parts.front().insert(0, "^");
    if (expression.atLineEnd)
        parts.back() += "$";

    // Whatever lies between two parts may be skipped, so the first place where a part is found
    // leaves the most room for those behind it: no other place need be tried.
    std::string rest;
    for (std::size_t i = 1; i < parts.size(); ++i)
        rest += "(?>[^\\n]*?" + parts[i] + ")";
    pattern.text = parts.front();
    if (rest.empty() || expression.atLineStart)
        pattern.text += rest;
    else // Likewise, where the rest is not found behind the first part, the line is done with.
        pattern.text += "(?:" + rest + "|[^\\n]*+(*SKIP)(*FAIL))";
    return pattern;
}

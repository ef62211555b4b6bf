#include "FindstrExpression.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

ByteSet withoutLineFeed(ByteSet bytes)
{
    bytes.reset('\n');
    return bytes;
}

FindstrItem byteItem(const ByteSet &bytes)
{
    return {FindstrItem::Kind::Byte, withoutLineFeed(bytes), false};
}

FindstrItem plain(char c)
{
    return byteItem(ByteSet().set(static_cast<unsigned char>(c)));
}

/// Parses one expression from left to right.
class Parser
{
public:
    explicit Parser(std::string_view expression)
        : text(expression)
    {
    }

    std::optional<FindstrExpression> parse();

private:
    [[nodiscard]] bool isLast() const { return pos + 1 == text.size(); }
    bool readItem();
    bool readClass();
    void readEscape();
    void repeatOrAdd();
    unsigned char classByte();

    std::string_view text;
    std::size_t pos = 0;
    FindstrExpression result;
};

std::optional<FindstrExpression> Parser::parse()
{
    for (; pos < text.size(); ++pos) {
        if (!readItem())
            return std::nullopt;
    }
    return std::move(result);
}

bool Parser::readItem()
{
    const char c = text[pos];
    if (c == '[')
        return readClass();
    if (c == '^' && pos == 0)
        result.atLineStart = true;
    else if (c == '$' && isLast())
        result.atLineEnd = true;
    else if (c == '*')
        repeatOrAdd();
    else if (c == '\\' && !isLast())
        readEscape();
    else
        result.items.push_back(c == '.' ? byteItem(anyByte()) : plain(c));
    return true;
}

void Parser::repeatOrAdd()
{
    if (result.items.empty() || result.items.back().kind != FindstrItem::Kind::Byte)
        result.items.push_back(plain('*'));
    else
        result.items.back().repeated = true;
}

void Parser::readEscape()
{
    const char c = text[++pos];
    if (c == '<')
        result.items.push_back({FindstrItem::Kind::WordStart, {}, false});
    else if (c == '>')
        result.items.push_back({FindstrItem::Kind::WordEnd, {}, false});
    else
        result.items.push_back(plain(c));
}

bool Parser::readClass()
{
    ByteSet bytes;
    ++pos;
    const bool negated = pos < text.size() && text[pos] == '^';
    if (negated)
        ++pos;
    for (; pos < text.size() && text[pos] != ']'; ++pos) {
        const unsigned first = classByte();
        unsigned last = first;
        const bool isRange = pos + 2 < text.size() && text[pos + 1] == '-' && text[pos + 2] != ']';
        if (isRange) {
            pos += 2;
            last = classByte();
        }
        for (unsigned b = first; b <= last; ++b)
            bytes.set(b);
    }
    if (pos >= text.size())
        return false;
    result.items.push_back(byteItem(negated ? ~bytes : bytes));
    return true;
}

unsigned char Parser::classByte()
{
    if (text[pos] == '\\' && !isLast())
        ++pos;
    return static_cast<unsigned char>(text[pos]);
}

} // namespace

std::vector<FindstrExpression> parseFindstr(std::string_view keyword)
{
    std::vector<FindstrExpression> expressions;
    while (!keyword.empty()) {
        const std::string_view word = keyword.substr(0, keyword.find(' '));
        keyword.remove_prefix(std::min(word.size() + 1, keyword.size()));
        if (word.empty())
            continue;
        if (auto expression = Parser(word).parse())
            expressions.push_back(std::move(*expression));
    }
    return expressions;
}

ByteSet anyByte()
{
    return withoutLineFeed(~ByteSet());
}

ByteSet wordBytes()
{
    return parseFindstr("[0-9A-Z_a-z]").front().items.front().bytes;
}

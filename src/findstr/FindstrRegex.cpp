#include "FindstrRegex.h"

#include <re2/re2.h>

#include <utility>

namespace {

const char *const noByte = R"([^\x00-\xff])";

std::string quoted(unsigned byte)
{
    const char c = static_cast<char>(byte);
    return RE2::QuoteMeta({&c, 1});
}

std::string oneOf(const ByteSet &bytes)
{
    std::string text;
    for (unsigned first = 0; first < bytes.size(); ++first) {
        if (!bytes[first])
            continue;
        unsigned last = first;
        while (last + 1 < bytes.size() && bytes[last + 1])
            ++last;
        text += quoted(first);
        if (last > first)
            text += '-' + quoted(last);
        first = last;
    }
    if (bytes.count() > 1)
        return '[' + text + ']';
    return bytes.none() ? noByte : text;
}

/// Builds a pattern from left to right. RE2 has only "\b" for both kinds of word border and no
/// lookahead, so the byte after a border is restricted to word bytes or to all others. If that byte
/// is repeated it may be absent: both cases are kept until a byte follows that must be present.
class Translator
{
public:
    [[nodiscard]] std::string translate(const FindstrExpression &expression);

private:
    enum class Following { Any, Word, NoWord };

    void addByte(const ByteSet &bytes);
    void addRepeated(const ByteSet &bytes);
    void joinCases(Following next);
    [[nodiscard]] std::string narrowed(const ByteSet &bytes) const;

    std::string pattern = "(?m)";
    Following following = Following::Any; ///< what the border at the end of `pattern` requires next
    std::string present;                  ///< repeated bytes after it, for the case of at least one
};

std::string Translator::translate(const FindstrExpression &expression)
{
    if (expression.atLineStart)
        pattern += '^';
    for (const FindstrItem &item : expression.items) {
        if (item.kind != FindstrItem::Kind::Byte) {
            const bool isStart = item.kind == FindstrItem::Kind::WordStart;
            joinCases(isStart ? Following::Word : Following::NoWord);
            pattern += "\\b";
            following = isStart ? Following::Word : Following::NoWord;
        } else if (item.repeated) {
            addRepeated(item.bytes);
        } else {
            addByte(item.bytes);
        }
    }
    const bool endsWithBorder = following != Following::Any;
    if (endsWithBorder && !expression.atLineEnd)
        addRepeated(anyByte());
    joinCases(Following::NoWord);
    if (endsWithBorder || expression.atLineEnd)
        pattern += '$';
    return std::move(pattern);
}

void Translator::addByte(const ByteSet &bytes)
{
    if (present.empty())
        pattern += narrowed(bytes);
    else
        pattern += "(?:" + present + oneOf(bytes) + '|' + narrowed(bytes) + ')';
    present.clear();
    following = Following::Any;
}

void Translator::addRepeated(const ByteSet &bytes)
{
    const std::string any = oneOf(bytes) + '*';
    if (following == Following::Any)
        pattern += any;
    else if (present.empty())
        present = narrowed(bytes) + any;
    else
        present = "(?:" + present + '|' + narrowed(bytes) + ')' + any;
}

/// Joins the cases. @p next: what follows if both end at the same place.
void Translator::joinCases(Following next)
{
    const bool mayBeMissing = following == Following::Any || following == next;
    if (!present.empty())
        pattern += "(?:" + present + ')' + (mayBeMissing ? "?" : "");
    else if (!mayBeMissing)
        pattern += noByte;
    present.clear();
}

std::string Translator::narrowed(const ByteSet &bytes) const
{
    static const ByteSet word = wordBytes();
    if (following == Following::Any)
        return oneOf(bytes);
    return oneOf(bytes & (following == Following::Word ? word : ~word));
}

} // namespace

std::string toRegex(const FindstrExpression &expression)
{
    return Translator().translate(expression);
}

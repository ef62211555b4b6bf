#pragma once

#include <QString>

/// The first @p length characters of @p text followed by an ellipsis; the whole text if it is
/// no longer. Splits no surrogate pair.
[[nodiscard]] inline QString shortened(const QString &text, int length)
{
    if (text.size() <= length)
        return text;
    const bool splits = text.at(length - 1).isHighSurrogate();
    return text.left(splits ? length - 1 : length) + QChar(0x2026);
}

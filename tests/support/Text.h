#pragma once

#include <QString>

/// Converts a UTF-8 literal.
[[nodiscard]] inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

#pragma once

#include <QString>

/// A text of the tests' source, which is UTF-8.
[[nodiscard]] inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

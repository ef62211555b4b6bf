#pragma once

#include <QByteArray>

/// A properties file after setting its level lines, by a plain implementation.
struct PlainLevels
{
    QByteArray bytes;
    bool bothReplaced = false;
};

/// @p bytes with the level lines set to @p level.
[[nodiscard]] PlainLevels withPlainLevels(QByteArray bytes, int level);

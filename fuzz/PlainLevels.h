#pragma once

#include <QByteArray>

/// A log4cpp properties file after its level lines were set, by the rule in its plainest form.
struct PlainLevels
{
    QByteArray bytes;
    bool bothReplaced = false;
};

/// @p bytes of a file with its level lines set to @p level.
[[nodiscard]] PlainLevels withPlainLevels(QByteArray bytes, int level);

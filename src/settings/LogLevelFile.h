#pragma once

#include <QByteArray>

#include <optional>

/// The two lines of the SDK's log4cpp properties file that set its log level. Works on bytes, so
/// that text in any encoding survives; a line that merely contains one of the two names, in a
/// comment or as part of a longer name, counts as well. Levels: 0 INFO, 1 DEBUG, 2 FATAL.
namespace LogLevelFile {

/// What became of a file's text.
struct Rewritten
{
    QByteArray text;
    bool rootReplaced = false;     ///< at least one root line was replaced
    bool categoryReplaced = false; ///< at least one line of the SDK's category was replaced
};

/// The level that the first root line of @p text names; nothing when there is no root line or it
/// names another level.
[[nodiscard]] std::optional<int> levelNamedIn(const QByteArray &text);

/// @p text, whose lines end in "\n", with every root and category line set to @p level. All other
/// bytes stay as they are. A level out of range leaves empty lines in their places.
[[nodiscard]] Rewritten rewritten(const QByteArray &text, int level);

/// @p bytes of a file with each CR LF made "\n". A CR anywhere else is content and stays.
[[nodiscard]] QByteArray withLineFeeds(const QByteArray &bytes);

/// The bytes of the file that holds @p text: with the platform's line ends in place of "\n".
[[nodiscard]] QByteArray withPlatformLineEnds(const QByteArray &text);

} // namespace LogLevelFile

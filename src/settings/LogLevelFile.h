#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The two lines of the SDK's log4cpp properties file that set its log level. Works on the file's
/// bytes, so that text in any encoding survives; a line that merely contains one of the two names,
/// in a comment or as part of a longer name, counts as well. Levels: 0 INFO, 1 DEBUG, 2 FATAL.
namespace LogLevelFile {

/// What became of a file's bytes.
struct Rewritten
{
    std::string bytes;
    bool rootReplaced = false;     ///< at least one root line was replaced
    bool categoryReplaced = false; ///< at least one line of the SDK's category was replaced
};

/// The level that the first root line of @p bytes names; nothing when there is no root line or it
/// names another level.
[[nodiscard]] std::optional<int> levelNamedIn(std::string_view bytes);

/// How text files end their lines on this platform.
[[nodiscard]] std::string_view platformLineEnd();

/// @p bytes, whose lines end in LF or CR LF, with every root and category line set to @p level and
/// each line ending in @p lineEnd. All other bytes stay as they are, a CR elsewhere included. A
/// level out of range leaves empty lines in their places. Throws std::bad_alloc when memory runs
/// out.
[[nodiscard]] Rewritten rewritten(std::string_view bytes, int level,
                                  std::string_view lineEnd = platformLineEnd());

} // namespace LogLevelFile

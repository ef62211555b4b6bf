#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The two lines of the SDK's log4cpp properties file that set its log level. Works on bytes, so
/// that text in any encoding survives. A line that merely contains one of the two names, in a
/// comment or as part of a longer name, counts too. Levels: 0 INFO, 1 DEBUG, 2 FATAL.
namespace LogLevelFile {

/// The result of rewritten().
struct Rewritten
{
    std::string bytes;
    bool rootReplaced = false;     ///< at least one root line was replaced
    bool categoryReplaced = false; ///< at least one category line was replaced
};

/// The level named in the first root line of @p bytes; nullopt if there is no root line or it names
/// another level.
[[nodiscard]] std::optional<int> levelNamedIn(std::string_view bytes);

/// The line end of text files on this platform.
[[nodiscard]] std::string_view platformLineEnd();

/// Returns @p bytes, whose lines end in LF or CR LF, with every root and category line set to @p
/// level and every line ending in @p lineEnd. All other bytes stay as they are, including a CR
/// elsewhere. An unknown level leaves these lines empty, which the SDK reads as its default. Throws
/// std::bad_alloc.
[[nodiscard]] Rewritten rewritten(std::string_view bytes, int level,
                                  std::string_view lineEnd = platformLineEnd());

} // namespace LogLevelFile

#pragma once

#include <string_view>

/// Whether @p line, given without its line end, matches @p keyword. Written to be read, not to be
/// fast: it tries everything, straight on the keyword's characters.
[[nodiscard]] bool slowFindstrMatches(std::string_view keyword, std::string_view line);

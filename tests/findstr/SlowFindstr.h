#pragma once

#include <string_view>

/// Whether @p line, without its line end, matches @p keyword. Simple, not fast: it tries every
/// possibility directly on the keyword's characters.
[[nodiscard]] bool slowFindstrMatches(std::string_view keyword, std::string_view line);

#pragma once

#include <re2/re2.h>

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

/// Finds the lines of a text that match a findstr keyword. The time is linear in the text's length.
class LineFilter
{
public:
    explicit LineFilter(std::string_view keyword);

    /// Returns false if an expression is too large; forEachLine() must not be called then.
    [[nodiscard]] bool isValid() const;

    /// Whether no line can match, because the keyword has no valid expression.
    [[nodiscard]] bool matchesNothing() const { return searches.empty(); }

    /// Calls @p found once for each matching line of @p text, in order, including its line feed. @p
    /// text consists of whole lines; only the last one may lack its line feed.
    void forEachLine(std::string_view text,
                     const std::function<void(std::string_view line)> &found) const;

private:
    /// One of the keyword's expressions. RE2 is slow with word borders: an expression with borders
    /// is searched without them first, and the lines found are checked with the whole expression.
    struct Search
    {
        std::unique_ptr<RE2> prefilter;
        std::unique_ptr<RE2> exact; ///< null: every line found matches

        [[nodiscard]] std::string_view firstLine(std::string_view text) const;
    };

    std::vector<Search> searches;
};

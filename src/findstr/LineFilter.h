#pragma once

#include <re2/re2.h>

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

/// Finds the lines of a text that a findstr keyword selects. Time is linear in the text's length.
class LineFilter
{
public:
    explicit LineFilter(std::string_view keyword);

    /// False: an expression is too large to be searched for; forEachLine() must not be called.
    [[nodiscard]] bool isValid() const;

    /// No line can match: the keyword holds no expression that could.
    [[nodiscard]] bool matchesNothing() const { return searches.empty(); }

    /// Calls @p found with each matching line of @p text once, in the text's order, its line feed
    /// included. @p text consists of whole lines; only the last one may lack its line feed.
    void forEachLine(std::string_view text,
                     const std::function<void(std::string_view line)> &found) const;

private:
    /// One of the keyword's expressions. RE2 is fast without word borders: an expression that has
    /// some is looked for without them, and its lines are then judged by the whole expression.
    struct Search
    {
        std::unique_ptr<RE2> finder;
        std::unique_ptr<RE2> judge; ///< null: each line that the finder finds matches

        [[nodiscard]] std::string_view firstLine(std::string_view text) const;
    };

    std::vector<Search> searches;
};

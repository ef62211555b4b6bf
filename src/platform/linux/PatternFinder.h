#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

/// A compiled PCRE2 pattern that is looked for in texts of whole lines. Machine code where the
/// library can make it, else the library's interpreter; both find the same.
class PatternFinder
{
public:
    enum class Use { MachineCode, Interpreter };

    /// A pattern that cannot be compiled (too large, say) is found everywhere.
    explicit PatternFinder(const std::string &pattern, Use use = Use::MachineCode);
    ~PatternFinder();
    PatternFinder(PatternFinder &&other) noexcept;

    /// False: find() only says "perhaps", at every place. Becomes so too when a search fails.
    [[nodiscard]] bool isUsable() const;

    /// Where the first match at or behind @p from begins; npos: nowhere.
    [[nodiscard]] std::size_t find(std::string_view text, std::size_t from);

private:
    struct Compiled;
    std::unique_ptr<Compiled> compiled; ///< null: not usable
};

#include "PatternFinder.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <cstdint>
#include <limits>
#include <utility>

namespace {

template <typename T, void (*release)(T *)>
struct Releaser
{
    void operator()(T *object) const { release(object); }
};

template <typename T, void (*release)(T *)>
using Handle = std::unique_ptr<T, Releaser<T, release>>;

using Code = Handle<pcre2_code, pcre2_code_free>;
using CompileContext = Handle<pcre2_compile_context, pcre2_compile_context_free>;
using MatchContext = Handle<pcre2_match_context, pcre2_match_context_free>;
using MatchData = Handle<pcre2_match_data, pcre2_match_data_free>;

PCRE2_SPTR units(const char *text)
{
    return reinterpret_cast<PCRE2_SPTR>(text);
}

Code compile(const std::string &pattern)
{
    const CompileContext context(pcre2_compile_context_create(nullptr));
    if (!context)
        return nullptr;
    pcre2_set_newline(context.get(), PCRE2_NEWLINE_LF);
    int error = 0;
    PCRE2_SIZE errorOffset = 0;
    return Code(pcre2_compile(units(pattern.data()), pattern.size(), PCRE2_MULTILINE, &error,
                              &errorOffset, context.get()));
}

} // namespace

struct PatternFinder::Compiled
{
    Code code;
    MatchContext context;
    MatchData match;
};

PatternFinder::PatternFinder(const std::string &pattern, Use use)
{
    Compiled made;
    made.code = compile(pattern);
    if (!made.code)
        return;
    made.context.reset(pcre2_match_context_create(nullptr));
    made.match.reset(pcre2_match_data_create(1, nullptr));
    if (!made.context || !made.match)
        return;
    // The library's limits are against patterns that backtrack without end; those that come here
    // do not, but their steps are counted all the same and grow with the length of a line.
    pcre2_set_match_limit(made.context.get(), std::numeric_limits<std::uint32_t>::max());
    if (use == Use::MachineCode)
        pcre2_jit_compile(made.code.get(), PCRE2_JIT_COMPLETE);
    compiled = std::make_unique<Compiled>(std::move(made));
}

PatternFinder::~PatternFinder() = default;
PatternFinder::PatternFinder(PatternFinder &&other) noexcept = default;

bool PatternFinder::isUsable() const
{
    return compiled != nullptr;
}

std::size_t PatternFinder::find(std::string_view text, std::size_t from)
{
    if (!compiled)
        return from;
    const int result = pcre2_match(compiled->code.get(), units(text.data()), text.size(), from, 0,
                                   compiled->match.get(), compiled->context.get());
    if (result >= 0)
        return pcre2_get_ovector_pointer(compiled->match.get())[0];
    if (result == PCRE2_ERROR_NOMATCH)
        return std::string_view::npos;
    compiled.reset();
    return from;
}

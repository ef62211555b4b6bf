#include "CallTrace.h"
#include "SlowFindstr.h"

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

// Replaces findstr, which Wine lacks. Supports only the program's own call: findstr /r EXPRESSION
// FILE. The command processor finds it first in the tests' working folder.

namespace {

/// @p argument in the encoding that the real one presumably uses.
std::string inSystemCodePage(const wchar_t *argument)
{
    std::string bytes(2 * std::wstring_view(argument).size() + 1, '\0');
    CharToOemW(argument, bytes.data());
    bytes.resize(std::string_view(bytes.data()).size());
    return bytes;
}

/// Creates the file named by this variable, and continues once it is removed.
void waitIfAskedTo()
{
    const wchar_t *const path = _wgetenv(L"VANTREL_FINDSTR_WAITS");
    if (path == nullptr)
        return;
    constexpr DWORD pause = 20; // milliseconds
    if (FILE *const mark = _wfopen(path, L"wb"))
        std::fclose(mark);
    while (GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES)
        Sleep(pause);
}

std::string_view withoutLineEnd(std::string_view line)
{
    for (const char end : {'\n', '\r'}) {
        if (!line.empty() && line.back() == end)
            line.remove_suffix(1);
    }
    return line;
}

/// Returns false if the file cannot be read.
bool search(const wchar_t *path, std::string_view expression)
{
    FILE *const file = _wfopen(path, L"rb");
    if (file == nullptr)
        return false;
    std::string text;
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
        text += static_cast<char>(c);
    std::fclose(file);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t feed = text.find('\n', at);
        const std::size_t end = feed == std::string::npos ? text.size() : feed + 1;
        const std::string_view line = std::string_view(text).substr(at, end - at);
        if (slowFindstrMatches(expression, withoutLineEnd(line)))
            std::fwrite(line.data(), 1, line.size(), stdout);
        at = end;
    }
    return true;
}

} // namespace

int wmain(int count, wchar_t **arguments)
{
    constexpr int failed = 2;
    if (count < 4 || std::wstring_view(arguments[1]) != L"/r")
        return failed;
    traceCall("findstr");
    waitIfAskedTo();
    _setmode(_fileno(stdout), _O_BINARY);
    const std::string expression = inSystemCodePage(arguments[2]);
    for (int i = 3; i < count; ++i) {
        if (!search(arguments[i], expression)) {
            std::fwprintf(stderr, L"FINDSTR: Cannot open %ls\n", arguments[i]);
            return failed;
        }
    }
    return 0;
}

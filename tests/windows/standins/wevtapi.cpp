#include "CallTrace.h"

#include <cwchar>
#include <string>

#include <windows.h>

#include <winevt.h>

// Replaces the system's event log library, whose export fails under Wine. It has two channels.
// VANTREL_REFUSED_CHANNEL names one whose export fails, VANTREL_REFUSAL its error code; with
// VANTREL_HALF_EXPORT a part is written first.

namespace {

std::wstring variable(const wchar_t *name)
{
    std::wstring value(MAX_PATH, L'\0');
    value.resize(GetEnvironmentVariableW(name, value.data(), MAX_PATH));
    return value;
}

BOOL fail(DWORD error)
{
    SetLastError(error);
    return FALSE;
}

/// The file contents, which contain the arguments of the call.
std::string events(const wchar_t *channel, const wchar_t *query, DWORD flags)
{
    std::string text("events of ");
    for (const std::wstring &part : {std::wstring(channel), L" by " + std::wstring(query),
                                     L" with " + std::to_wstring(flags) + L"\n"}) {
        for (const wchar_t character : part)
            text += static_cast<char>(character);
    }
    return text;
}

} // namespace

BOOL WINAPI EvtExportLog(EVT_HANDLE session, LPCWSTR channel, LPCWSTR query, LPCWSTR target,
                         DWORD flags)
{
    traceCall("EvtExportLog");
    if (session != nullptr)
        return fail(ERROR_INVALID_HANDLE);
    if (std::wcscmp(channel, L"Application") != 0 && std::wcscmp(channel, L"System") != 0)
        return fail(ERROR_EVT_CHANNEL_NOT_FOUND);
    const bool isRefused = variable(L"VANTREL_REFUSED_CHANNEL") == channel;
    if (isRefused && variable(L"VANTREL_HALF_EXPORT").empty())
        return fail(std::stoul(variable(L"VANTREL_REFUSAL")));

    const HANDLE file =
        CreateFileW(target, GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return FALSE;
    const std::string text = events(channel, query, flags);
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(file);
    return isRefused ? fail(std::stoul(variable(L"VANTREL_REFUSAL"))) : TRUE;
}

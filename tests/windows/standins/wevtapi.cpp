#include "CallTrace.h"

#include <cwchar>
#include <string>

#include <windows.h>

#include <winevt.h>

// Stands in for the system's library of event logs, whose export fails under Wine. Two channels are
// there. VANTREL_REFUSED_CHANNEL names one that cannot be exported, VANTREL_REFUSAL the error then;
// with VANTREL_HALF_EXPORT a part of it is written before that is found out.

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

/// What a test can see of how it was asked.
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

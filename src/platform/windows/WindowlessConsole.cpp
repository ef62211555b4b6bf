#include "windows/WindowlessConsole.h"

#include <memory>
#include <string>
#include <type_traits>

#include <windows.h>

namespace {

constexpr int maxAttempts = 200;
constexpr DWORD pause = 10; // milliseconds between two attempts

struct HandleCloser
{
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleCloser>;

/// A command processor with a console, but without a window. It ends when its input is closed.
struct ConsoleKeeper
{
    OwnedHandle input;
    OwnedHandle process;
    DWORD id = 0;
};

/// By its full path: a program of that name beside ours would be found first.
std::wstring commandProcessor()
{
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetSystemDirectoryW(path.data(), static_cast<UINT>(path.size())));
    return path + L"\\cmd.exe";
}

ConsoleKeeper startKeeper()
{
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    if (CreatePipe(&readEnd, &writeEnd, &inheritable, 0) == FALSE)
        return {};
    const OwnedHandle keepersInput(readEnd);
    ConsoleKeeper keeper;
    keeper.input.reset(writeEnd);
    SetHandleInformation(writeEnd, HANDLE_FLAG_INHERIT, 0);

    STARTUPINFOW start{};
    start.cb = sizeof(start);
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = readEnd;
    std::wstring command = L"cmd.exe /d /q";
    PROCESS_INFORMATION started{};
    if (CreateProcessW(commandProcessor().c_str(), command.data(), nullptr, nullptr, TRUE,
                       CREATE_NO_WINDOW, nullptr, nullptr, &start, &started) == FALSE)
        return {};
    CloseHandle(started.hThread);
    keeper.process.reset(started.hProcess);
    keeper.id = started.dwProcessId;
    return keeper;
}

} // namespace

bool takeWindowlessConsole()
{
    if (GetConsoleCP() != 0)
        return true;
    const ConsoleKeeper keeper = startKeeper();
    if (!keeper.process)
        return false;
    // Its console appears shortly after the process.
    for (int attempt = 0; attempt < maxAttempts; ++attempt) {
        if (AttachConsole(keeper.id) != FALSE)
            return true; // the console exists as long as a process is attached
        if (WaitForSingleObject(keeper.process.get(), pause) == WAIT_OBJECT_0)
            return false;
    }
    return false;
}

#include "ProcessLock.h"

#include <QString>

#include <windows.h>

ProcessLock::ProcessLock(const QString &name, int patience)
{
    // No path: a backslash would name another place for locks.
    const std::wstring plain =
        QString(name).replace(QLatin1Char('\\'), QLatin1Char('/')).toStdWString();
    const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, (plain + L" lock").c_str());
    if (mutex == nullptr)
        return;
    handle = reinterpret_cast<qintptr>(mutex);
    const DWORD answer = ::WaitForSingleObject(mutex, DWORD(patience));
    held = answer == WAIT_OBJECT_0 || answer == WAIT_ABANDONED; // its holder ended
}

ProcessLock::~ProcessLock()
{
    if (handle == -1)
        return;
    const auto mutex = reinterpret_cast<HANDLE>(handle);
    if (held)
        ::ReleaseMutex(mutex);
    ::CloseHandle(mutex);
}

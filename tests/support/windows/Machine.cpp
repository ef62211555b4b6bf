#include "Machine.h"

#include <windows.h>

bool onWindows()
{
    return true;
}

bool underWine()
{
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

#include "Machine.h"

#include <QString>

#include <windows.h>

bool onWindows()
{
    return true;
}

bool underWine()
{
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

void hide(const QString &path)
{
    if (!SetFileAttributesW(path.toStdWString().c_str(), FILE_ATTRIBUTE_HIDDEN))
        qFatal("cannot hide a file");
}

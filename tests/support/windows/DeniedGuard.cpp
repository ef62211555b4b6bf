#include "DeniedGuard.h"

#include <QSharedMemory>

#include <windows.h>

DeniedGuard::DeniedGuard(const QString &key)
{
    // Shared memory and events share a name space: an event blocks the name.
    const std::wstring name = QSharedMemory(key).nativeKey().toStdWString();
    taken = CreateEventW(nullptr, TRUE, FALSE, name.c_str());
    if (taken == nullptr)
        qFatal("cannot take the guard's name");
}

DeniedGuard::~DeniedGuard()
{
    CloseHandle(taken);
}

QMap<QString, QString> DeniedGuard::variables()
{
    return {};
}

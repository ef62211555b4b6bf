#include "DeniedGuard.h"

#include <QSharedMemory>

#include <windows.h>

DeniedGuard::DeniedGuard(const QString &key)
{
    // Memory and events share their names: what is one cannot be the other.
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

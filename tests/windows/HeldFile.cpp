#include "HeldFile.h"

#include <QDir>

#include <windows.h>

namespace {

DWORD shareOf(HeldFile::Others others)
{
    switch (others) {
    case HeldFile::Others::MayNothing:
        return 0;
    case HeldFile::Others::MayRead:
        return FILE_SHARE_READ;
    case HeldFile::Others::MayEverything:
        break;
    }
    return FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
}

} // namespace

HeldFile::HeldFile(const QString &path, Others others)
    : handle(CreateFileW(QDir::toNativeSeparators(path).toStdWString().c_str(),
                         GENERIC_READ | GENERIC_WRITE, shareOf(others), nullptr, OPEN_EXISTING,
                         FILE_ATTRIBUTE_NORMAL, nullptr))
{
    if (handle == INVALID_HANDLE_VALUE)
        qFatal("cannot hold %s", qPrintable(path));
}

HeldFile::~HeldFile()
{
    CloseHandle(handle);
}

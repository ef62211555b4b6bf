#include "SharedFile.h"

#include <QDir>
#include <QFileInfo>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace {

/// The path in a form without length limit.
std::wstring systemPath(const QString &path)
{
    const QString native = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    if (native.size() < MAX_PATH)
        return native.toStdWString();
    const QString prefix = QStringLiteral(R"(\\?\)");
    const bool onShare = native.startsWith(QLatin1String(R"(\\)"));
    return (prefix + (onShare ? QStringLiteral("UNC") + native.mid(1) : native)).toStdWString();
}

} // namespace

bool openShared(QFile &file)
{
    const std::wstring path = systemPath(file.fileName());
    // Opening a folder fails without FILE_FLAG_BACKUP_SEMANTICS.
    const HANDLE handle = ::CreateFileW(path.c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    const int descriptor =
        ::GetFileType(handle) == FILE_TYPE_DISK
            ? ::_open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_RDONLY | _O_BINARY)
            : -1;
    if (descriptor < 0) {
        ::CloseHandle(handle);
        return false;
    }
    if (file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered,
                  QFileDevice::AutoCloseHandle))
        return true;
    ::_close(descriptor);
    return false;
}

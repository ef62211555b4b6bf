#include "Faults.h"

#include <QDir>
#include <QFileInfo>

#include <windows.h>

// Permissions and full disks are not available here.

OrdinaryUser::OrdinaryUser() = default;

OrdinaryUser::~OrdinaryUser() = default;

bool OrdinaryUser::available()
{
    return false;
}

bool makeLink(const QString &target, const QString &link)
{
    // SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE of Windows 10, for developers without
    // administrator rights.
    constexpr DWORD forDevelopers = 2;
    const DWORD kind = QFileInfo(target).isDir() ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0;
    const std::wstring from = QDir::toNativeSeparators(link).toStdWString();
    const std::wstring to = QDir::toNativeSeparators(target).toStdWString();
    // Some systems report success without creating a link.
    return CreateSymbolicLinkW(from.c_str(), to.c_str(), kind | forDevelopers) != 0 &&
           QFileInfo(link).isSymLink();
}

FileSizeLimit::FileSizeLimit(long /*bytes*/) {}

FileSizeLimit::~FileSizeLimit() = default;

bool FileSizeLimit::available()
{
    return false;
}

#include "Faults.h"

#include <QDir>
#include <QFileInfo>

#include <windows.h>

// No means against an ordinary user's rights or for a full disk here: see available().

OrdinaryUser::OrdinaryUser() = default;

OrdinaryUser::~OrdinaryUser() = default;

bool OrdinaryUser::available()
{
    return false;
}

bool makeLink(const QString &target, const QString &link)
{
    // A flag of Windows 10: links are also for ordinary users who are developers.
    constexpr DWORD forDevelopers = 2;
    const DWORD kind = QFileInfo(target).isDir() ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0;
    const std::wstring from = QDir::toNativeSeparators(link).toStdWString();
    const std::wstring to = QDir::toNativeSeparators(target).toStdWString();
    // Some say that they could and did nothing: only what is there counts.
    return CreateSymbolicLinkW(from.c_str(), to.c_str(), kind | forDevelopers) != 0 &&
           QFileInfo(link).isSymLink();
}

FileSizeLimit::FileSizeLimit(long /*bytes*/) {}

FileSizeLimit::~FileSizeLimit() = default;

bool FileSizeLimit::available()
{
    return false;
}

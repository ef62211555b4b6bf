#include "EventLog.h"

#include "PlatformLog.h"
#include "windows/Win32Seams.h"

#include <QDir>
#include <QFile>

#include <windows.h>

#include <winevt.h>

namespace {

bool exportLocally(const wchar_t *channel, const wchar_t *query, const wchar_t *target,
                   unsigned long flags)
{
    return EvtExportLog(nullptr, channel, query, target, flags) != FALSE;
}

} // namespace

bool exportEventLog(const QString &channel, const QString &target)
{
    return exportEventLogBy(exportLocally, channel, target);
}

bool exportEventLogBy(const ExportLog &exportLog, const QString &channel, const QString &target)
{
    const std::wstring channelPath = channel.toStdWString();
    const std::wstring targetPath = QDir::toNativeSeparators(target).toStdWString();
    if (exportLog(channelPath.c_str(), L"*", targetPath.c_str(), EvtExportLogChannelPath))
        return true;
    const DWORD error = GetLastError();
    qCWarning(platformLog) << "not exported:" << channel << "error" << error;
    QFile::remove(target); // it may be incomplete
    return false;
}

#include "CLogProcessThread.h"

#include "DumpArchives.h"
#include "EngineLog.h"
#include "EventLogs.h"
#include "NicReport.h"
#include "ReportFile.h"
#include "SystemReport.h"

#include <QDebug>

// The export items: they write query results in the formats that support tools expect.

namespace {

/// The fixed text for a query that failed; null if it succeeded or fails silently.
const char *failureOf(MemoryModuleList::Query query)
{
    using Query = MemoryModuleList::Query;
    switch (query) {
    case Query::Library:
        return "COM库初始化失败";
    case Query::Locator:
        return "WbemLocator创建失败";
    case Query::Connection:
        return "WMI服务连接失败";
    case Query::Proxy:
        return "设置代理失败";
    case Query::Execution:
        return "查询执行失败";
    case Query::Unavailable:
    case Query::Enumeration:
    case Query::Complete:
        break;
    }
    return nullptr;
}

} // namespace

bool CLogProcessThread::saveEventLog(const QString &staging)
{
    return !staging.isEmpty() && exportEventLogs(staging, probes.exportEventLog);
}

bool CLogProcessThread::saveSysInfo(const QString &staging)
{
    if (staging.isEmpty())
        return false;
    ReportFile report(staging + QStringLiteral("/SystemInfo.txt"), ReportFile::Mode::Append);
    const std::optional<MemoryStatus> status = probes.memory();
    if (!status) {
        qDebug() << "Failed to get memory status.";
        return false;
    }
    report.write(memoryReport(*status));
    queryMemoryModules();
    while (!partNumbers.isEmpty())
        report.write(moduleReport(partNumbers.takeFirst(), moduleCapacities.takeFirst(),
                                  moduleSpeeds.takeFirst()));
    return true;
}

bool CLogProcessThread::queryMemoryModules()
{
    if (comSecurityResult < 0)
        return false;
    const MemoryModuleList found = probes.memoryModules();
    if (const char *failure = failureOf(found.query))
        qDebug() << failure;
    else if (found.query == MemoryModuleList::Query::Unavailable)
        qCWarning(engineLog) << "memory modules not available";
    for (const MemoryModule &module : found.modules) {
        partNumbers.append(module.partNumber);
        moduleCapacities.append(module.capacity);
        moduleSpeeds.append(module.speed);
    }
    return found.query == MemoryModuleList::Query::Complete;
}

bool CLogProcessThread::saveNICInfo(const QString &staging)
{
    if (staging.isEmpty())
        return false;
    ReportFile report(staging + QStringLiteral("/NICInfo.txt"), ReportFile::Mode::Truncate);
    report.write(nicReport(probes.adapters()));
    return true;
}

bool CLogProcessThread::saveSystemDump(const QString &staging)
{
    if (staging.isEmpty())
        return false;
    const CrashDumpPaths paths = probes.crashDumpPaths(); // called once: it searches the disk
    writeSystemDumps(staging + QStringLiteral("/SystemDmp.zip"), paths, kernelDumpReadable(paths),
                     dumpProgress());
    return true;
}

bool CLogProcessThread::memoryDumpReadable() const
{
    return kernelDumpReadable(probes.crashDumpPaths());
}

bool CLogProcessThread::saveClientDump(const QString &staging)
{
    if (staging.isEmpty())
        return false;
    writeClientDumps(staging + QStringLiteral("/ClientDump.zip"),
                     currentRequest ? currentRequest->sourcePath : sourcePath, dumpProgress());
    return true;
}

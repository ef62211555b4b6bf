#include "CLogProcessThread.h"

#include "CConfiguration.h"
#include "EngineLog.h"

#include <QDateTime>
#include <QMutexLocker>
#include <QTableWidgetItem>

#include <utility>

namespace {

constexpr unsigned long pollInterval = 50; // milliseconds

std::atomic<qint64> lastStart{0};

} // namespace

CLogProcessThread::CLogProcessThread(SystemProbes systemProbes)
    : probes(std::move(systemProbes))
{
    lastStart = QDateTime::currentMSecsSinceEpoch();
    CConfiguration::instance()->spareWorkPath = QStringLiteral("D:/Vantrel");
    comSecurityResult = probes.comSecurity();
}

CLogProcessThread::~CLogProcessThread()
{
    running = false;
    wait();
    for (const QString &zipPath : std::as_const(requestQueue))
        qCInfo(engineLog) << "export dropped:" << zipPath;
}

void CLogProcessThread::setBasePath(const QString &base)
{
    const QMutexLocker lock(&mutex);
    basePath = base;
    stagingPath = base + QStringLiteral("LogInfo");
}

void CLogProcessThread::setLogSourceFolder(const QString &name)
{
    const QMutexLocker lock(&mutex);
    sourcePath = basePath + name;
}

void CLogProcessThread::setSdkLogItems(const QList<QTableWidgetItem *> &items)
{
    const QMutexLocker lock(&mutex);
    sdkLogItems.emplace();
    for (const QTableWidgetItem *item : items)
        sdkLogItems->append(item->toolTip());
}

void CLogProcessThread::enqueueExport(const QString &zipPath)
{
    const QMutexLocker lock(&mutex);
    requestQueue.append(zipPath);
}

void CLogProcessThread::setSdkLogOnly(bool only)
{
    sdkLogOnly = only;
}

void CLogProcessThread::setRunning(bool on)
{
    const QMutexLocker lock(&mutex);
    running = on;
}

qint64 CLogProcessThread::startTime()
{
    return lastStart;
}

void CLogProcessThread::run()
{
    do {
        if (takeRequest())
            carryOutRequest();
        else
            msleep(pollInterval);
    } while (running);
}

bool CLogProcessThread::takeRequest()
{
    const QMutexLocker lock(&mutex);
    if (requestQueue.isEmpty())
        return false;
    currentRequest = Request{requestQueue.takeFirst(), stagingPath, sourcePath,
                             std::exchange(sdkLogItems, std::nullopt).value_or(QStringList())};
    return true;
}

void CLogProcessThread::carryOutRequest()
{
    exportProgress.begin();
    if (process(*currentRequest) == Outcome::Dropped) {
        const QMutexLocker lock(&mutex);
        if (!sdkLogItems.has_value()) // newer ones take precedence
            sdkLogItems = currentRequest->sdkLogItems;
    }
    exportProgress.end();
    currentRequest.reset();
}

#include "moc_CLogProcessThread.cpp"

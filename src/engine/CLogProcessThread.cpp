#include "CLogProcessThread.h"

#include "CConfiguration.h"
#include "ZipPacker.h"

#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutexLocker>
#include <QTableWidgetItem>

#include <exception>
#include <utility>

namespace {

constexpr unsigned long pollInterval = 50; // milliseconds

std::atomic<qint64> lastStart{0};

/// Copies a file unless the target is there already, and says on the debug output why it could not.
bool copyFile(const QString &from, const QString &to)
{
    QFile file(from);
    const bool copied = file.copy(to);
    if (!copied)
        qDebug() << "not copied:" << from << file.errorString();
    return copied;
}

/// Makes the staging folder unless it is there. What a killed run left in it goes into the zip too.
bool prepareStaging(const QString &staging)
{
    const QDir folder(staging);
    if (folder.exists()) {
        if (!folder.isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot))
            qDebug() << "staging folder left by an earlier run:" << staging;
        return true;
    }
    if (QDir().mkdir(staging))
        return true;
    qDebug() << "mkdir failed";
    return false;
}

/// Runs an item. What it throws is its own failure, and the items after it are gathered all the
/// same.
template <typename Item>
bool succeeds(Item item)
{
    try {
        return item();
    } catch (const std::exception &problem) {
        qDebug() << "item given up:" << problem.what();
    } catch (...) {
        qDebug() << "item given up";
    }
    return false;
}

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
        qDebug() << "export dropped:" << zipPath;
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
    sdkLogItems.clear();
    for (const QTableWidgetItem *item : items)
        sdkLogItems.append(item->toolTip());
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
            process();
        else
            msleep(pollInterval);
    } while (running);
}

bool CLogProcessThread::takeRequest()
{
    const QMutexLocker lock(&mutex);
    if (requestQueue.isEmpty())
        return false;
    currentZipPath = requestQueue.takeFirst();
    return true;
}

void CLogProcessThread::process()
{
    QString staging;
    bool copySdkLog = CConfiguration::instance()->sdkLog;
    {
        const QMutexLocker lock(&mutex);
        staging = stagingPath;
        copySdkLog = copySdkLog || !sdkLogItems.isEmpty();
    }
    if (!prepareStaging(staging))
        return;
    if (copySdkLog) {
        if (copySdkLogs(staging) == Outcome::Dropped)
            return;
        if (!currentZipPath.isEmpty() && sdkLogOnly.exchange(false)) {
            pack(staging);
            return;
        }
    }
    gatherOtherItems(staging);
    if (!currentZipPath.isEmpty())
        pack(staging);
}

CLogProcessThread::Outcome CLogProcessThread::copySdkLogs(const QString &staging)
{
    const QString sdkFolder = staging + QStringLiteral("/SDKLOG");
    bool logsChosen = false;
    {
        const QMutexLocker lock(&mutex);
        logsChosen = !sdkLogItems.isEmpty();
    }
    if (logsChosen) {
        if (!QDir(sdkFolder).exists() && !QDir().mkpath(sdkFolder)) {
            qDebug() << "mkpath failed";
            return Outcome::Dropped; // the logs are still chosen
        }
        QStringList paths;
        {
            const QMutexLocker lock(&mutex);
            paths.swap(sdkLogItems);
        }
        for (const QString &path : std::as_const(paths))
            qDebug() << copyFile(path, sdkFolder + QLatin1Char('/') + QFileInfo(path).fileName());
    }
    copyGenTlLogs(sdkFolder);
    return Outcome::Continue;
}

void CLogProcessThread::copyGenTlLogs(const QString &sdkFolder)
{
    QString source;
    {
        const QMutexLocker lock(&mutex);
        source = sourcePath + QStringLiteral("/gentl_cxp_log");
    }
    const QString target = sdkFolder + QStringLiteral("/gentl_cxp_log");
    const QDir folder(source);
    if (!folder.exists())
        return;
    if (!QDir().mkpath(target)) {
        qDebug() << "not copied:" << source;
        return;
    }
    const QStringList names =
        folder.entryList(QDir::Files | QDir::NoSymLinks | QDir::NoDotAndDotDot);
    for (const QString &name : names)
        copyFile(source + QLatin1Char('/') + name, target + QLatin1Char('/') + name);
}

void CLogProcessThread::gatherOtherItems(const QString &staging)
{
    const CConfiguration &chosen = *CConfiguration::instance();
    if (chosen.systemLog && !succeeds([&] { return saveEventLog(staging); }))
        qDebug() << "saveEventLog failed!";
    if (chosen.systemInfo && !succeeds([&] { return saveSysInfo(staging); }))
        qDebug() << "saveSysInfo failed!";
    if (chosen.nicInfo && !succeeds([&] { return saveNICInfo(staging); }))
        qDebug() << "saveNICInfo failed!";
    if (chosen.systemDump && !succeeds([&] { return saveSystemDump(staging); }))
        qDebug() << "saveEventLog failed!"; // these words, not its own: support tools know them
    if (chosen.clientDump)
        succeeds([&] { return saveClientDump(staging); });
}

void CLogProcessThread::pack(const QString &staging)
{
    zipFolder(staging, currentZipPath);
    emit closeWaitDlg();
}

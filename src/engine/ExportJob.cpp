#include "CLogProcessThread.h"

#include "EngineLog.h"
#include "ExportItems.h"
#include "FileCopies.h"
#include "PrivateFiles.h"
#include "ZipPacker.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

#include <exception>

// Processing of one request, from creating the staging folder to packing it.

namespace {

// Work per byte. Disks copy several times faster than processors compress.
constexpr double copying = 0.15;
constexpr double packing = 1;
constexpr double packingAgain = 0.5; ///< a dump archive, which is smaller than the dump

/// Creates the staging folder, readable only by its owner. Files that a killed run left in it go
/// into the zip too.
bool prepareStaging(const QString &staging)
{
    const QDir folder(staging);
    if (folder.exists() && !folder.isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot))
        qCInfo(engineLog) << "staging folder left by an earlier run:" << staging;
    if (makePrivateFolder(staging))
        return true;
    qDebug() << "mkdir failed";
    return false;
}

/// Runs an item. An exception counts as the item's failure, so that later items still run.
template <typename Item>
bool succeeds(Item item)
{
    try {
        return item();
    } catch (const std::exception &problem) {
        qCWarning(engineLog) << "item failed:" << problem.what();
    } catch (...) {
        qCWarning(engineLog) << "item failed";
    }
    return false;
}

} // namespace

CLogProcessThread::Outcome CLogProcessThread::process(const Request &request)
{
    if (!prepareStaging(request.stagingPath))
        return Outcome::Dropped;
    const bool isPacked = !request.currentZipPath.isEmpty();
    if (CConfiguration::instance()->sdkLog || !request.sdkLogItems.isEmpty()) {
        const QString sdkFolder = request.stagingPath + QStringLiteral("/SDKLOG");
        if (!copyChosenLogs(request.sdkLogItems, sdkFolder))
            return Outcome::Dropped;
        copyGenTlLogs(request.sourcePath + QStringLiteral("/gentl_cxp_log"),
                      sdkFolder + QStringLiteral("/gentl_cxp_log"));
        if (isPacked && sdkLogOnly.exchange(false)) {
            pack(request);
            return Outcome::Done;
        }
    }
    gatherItems(request.stagingPath);
    if (isPacked)
        pack(request);
    return Outcome::Done;
}

bool CLogProcessThread::copyChosenLogs(const QStringList &paths, const QString &folder)
{
    if (paths.isEmpty())
        return true;
    if (!QDir(folder).exists() && !QDir().mkpath(folder)) {
        qDebug() << "mkpath failed";
        return false;
    }
    QVector<FileCopy> copies;
    for (const QString &path : paths)
        copies.append({path, folder + QLatin1Char('/') + QFileInfo(path).fileName()});
    copyAll(copies, [](const CopyResult &result) { qDebug() << result.copied; });
    return true;
}

void CLogProcessThread::copyGenTlLogs(const QString &source, const QString &folder)
{
    const QDir logs(source);
    if (!logs.exists())
        return;
    if (!QDir().mkpath(folder)) {
        qCWarning(engineLog) << "not copied:" << source;
        return;
    }
    QVector<FileCopy> copies;
    for (const QString &name :
         logs.entryList(QDir::Files | QDir::NoSymLinks | QDir::NoDotAndDotDot))
        copies.append({source + QLatin1Char('/') + name, folder + QLatin1Char('/') + name});
    copyAll(copies, [](const CopyResult &) {}); // silent
}

void CLogProcessThread::copyAll(const QVector<FileCopy> &copies,
                                const std::function<void(const CopyResult &)> &report)
{
    const auto size = [](const FileCopy &copy) { return double(QFileInfo(copy.from).size()); };
    for (const FileCopy &copy : copies)
        exportProgress.expect(size(copy) * (copying + packing));
    copyFiles(copies, [&](const FileCopy &copy, const CopyResult &result) {
        if (!result.copied)
            qCWarning(engineLog) << "not copied:" << copy.from << result.failure;
        report(result);
        exportProgress.advance(size(copy) * copying);
    });
}

void CLogProcessThread::gatherItems(const QString &staging)
{
    const CConfiguration &hub = *CConfiguration::instance();
    for (const ExportItem &item : exportItems) {
        const auto save = [&] { return (this->*item.save)(staging); };
        if (hub.*item.isChosen && !succeeds(save) && item.failureText != nullptr)
            qDebug() << item.failureText;
    }
}

ProgressSink CLogProcessThread::dumpProgress()
{
    return {
        [this](qint64 bytes) { exportProgress.expect(double(bytes) * (packing + packingAgain)); },
        [this](qint64 bytes) { exportProgress.advance(double(bytes) * packing); }};
}

void CLogProcessThread::pack(const Request &request)
{
    // The staging folder is complete, so packing is all the remaining work.
    zipFolder(request.stagingPath, request.currentZipPath,
              {[this](qint64 bytes) { exportProgress.expectOnly(double(bytes) * packing); },
               [this](qint64 bytes) { exportProgress.advance(double(bytes) * packing); }});
    emit closeWaitDlg();
}

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

// What the worker does for one request, from the empty staging folder to the zip.

namespace {

/// Makes the staging folder unless it is there, for nobody else to look into. What a killed run
/// left in it goes into the zip too.
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

void logFailure(const FileCopy &copy, const CopyResult &result)
{
    if (!result.copied)
        qCWarning(engineLog) << "not copied:" << copy.from << result.failure;
}

/// Runs an item. What it throws is its own failure, and the items after it are gathered all the
/// same.
template <typename Item>
bool succeeds(Item item)
{
    try {
        return item();
    } catch (const std::exception &problem) {
        qCWarning(engineLog) << "item given up:" << problem.what();
    } catch (...) {
        qCWarning(engineLog) << "item given up";
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
    copyFiles(copies, [](const FileCopy &copy, const CopyResult &result) {
        logFailure(copy, result);
        qDebug() << result.copied;
    });
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
    copyFiles(copies, logFailure);
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

void CLogProcessThread::pack(const Request &request)
{
    zipFolder(request.stagingPath, request.currentZipPath);
    emit closeWaitDlg();
}

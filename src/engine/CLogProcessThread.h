#pragma once

#include "ExportProgress.h"
#include "ProgressSink.h"
#include "SystemProbes.h"

#include <QByteArray>
#include <QList>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <QThread>
#include <QVector>

#include <atomic>
#include <functional>
#include <optional>

class QTableWidgetItem;
struct CopyResult;
struct FileCopy;

/// The export worker: collects the chosen items in a staging folder, packs it into the requested
/// zip and emits closeWaitDlg(). Requests are queued and processed one after the other. Each
/// request reads the hub's export flags, the log source and the chosen logs when its turn comes.
///
/// The setters may be called on the GUI thread while the worker runs. The destructor waits for the
/// current request without a time limit.
class CLogProcessThread : public QThread
{
    Q_OBJECT

public:
    /// @p systemProbes: the functions by which the items query this machine.
    explicit CLogProcessThread(SystemProbes systemProbes = {});
    ~CLogProcessThread() override;

    /// @p base: the SDK folder, ending with a separator. The staging folder is created in it.
    void setBasePath(const QString &base);
    /// @p name: the log source, a folder in the SDK folder. Call setBasePath() first.
    void setLogSourceFolder(const QString &name);
    /// Sets the files that the next request copies: each item's tool tip is a path. Paths are read
    /// during the call; items are not kept. Replaces files that a dropped request left for the next
    /// one.
    void setSdkLogItems(const QList<QTableWidgetItem *> &items);
    /// Queues a request for a zip at @p zipPath. With an empty path the items are collected, but no
    /// zip is written and no signal emitted.
    void enqueueExport(const QString &zipPath);
    /// Makes the next request that has a path and copies SDK logs export nothing else.
    void setSdkLogOnly(bool only);
    /// Off stops the worker after the current request. Initially on; does not restart a finished
    /// worker.
    void setRunning(bool on);

    /// Progress of the current request from 0 to less than 1, never decreasing; negative if there
    /// is none. Any thread.
    [[nodiscard]] double progress() const { return exportProgress.fraction(); }

    /// When the last worker of this process was constructed, in milliseconds since 1970.
    [[nodiscard]] static qint64 startTime();

    // The export items. Each writes to the staging folder and returns false on failure or for an
    // empty path. Call them on the worker thread, or on any thread while the worker does not run.
    bool saveEventLog(const QString &staging);
    bool saveSysInfo(const QString &staging);
    bool saveNICInfo(const QString &staging);
    bool saveSystemDump(const QString &staging);
    bool saveClientDump(const QString &staging);

    /// Appends the properties of all memory modules to the three module lists, which saveSysInfo()
    /// empties. Returns false if the query failed.
    bool queryMemoryModules();
    /// Whether there is a readable kernel dump.
    [[nodiscard]] bool memoryDumpReadable() const;

signals:
    /// Packing has ended, even if the zip could not be written. Not emitted for a request without a
    /// path. Emitted on the worker thread.
    void closeWaitDlg();

protected:
    void run() override;

private:
    /// The data of a request, taken from the members below under one lock.
    struct Request
    {
        QString currentZipPath; ///< empty: the items are collected, but not packed
        QString stagingPath;
        QString sourcePath;
        QStringList sdkLogItems;
    };
    enum class Outcome { Done, Dropped };

    bool takeRequest();
    void carryOutRequest();
    Outcome process(const Request &request);
    /// Returns false if @p folder cannot be created.
    bool copyChosenLogs(const QStringList &paths, const QString &folder);
    void copyGenTlLogs(const QString &source, const QString &folder);
    void copyAll(const QVector<FileCopy> &copies,
                 const std::function<void(const CopyResult &)> &report);
    void gatherItems(const QString &staging);
    void pack(const Request &request);
    /// For the dump archives in the staging folder.
    ProgressSink dumpProgress();

    const SystemProbes probes;
    std::atomic<bool> running{true};
    QMutex mutex;                          ///< guards stagingPath to requestQueue and sdkLogItems
    std::optional<Request> currentRequest; ///< used by the worker only
    QString stagingPath;
    QString sourcePath;
    QString basePath;
    QList<QString> requestQueue;
    QList<QByteArray> partNumbers; ///< memory modules: one entry per module in each list
    QList<qint32> moduleSpeeds;
    QList<qint32> moduleCapacities;
    std::atomic<bool> sdkLogOnly{false};
    /// Paths of the log files to copy; nullopt after a request has taken them.
    std::optional<QStringList> sdkLogItems;
    ExportProgress exportProgress;
    qint32 comSecurityResult = 0; ///< negative: memory modules cannot be queried
};

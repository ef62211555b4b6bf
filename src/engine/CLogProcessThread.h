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

/// The export worker: gathers the chosen items in a staging folder, packs that into the requested
/// zip and tells when it is done. Requests are queued and carried out one after the other; which
/// items are gathered is read from the hub when a request's turn comes.
///
/// The setters may be called on the GUI thread while the worker runs. The destructor waits for the
/// request in hand, without a time limit.
class CLogProcessThread : public QThread
{
    Q_OBJECT

public:
    /// @p systemProbes: how the items query this machine.
    explicit CLogProcessThread(SystemProbes systemProbes = {});
    ~CLogProcessThread() override;

    /// @p base: the SDK folder, with a separator at its end. The staging folder lies in it.
    void setBasePath(const QString &base);
    /// @p name: the log source, a folder in the SDK folder. Call setBasePath first.
    void setLogSourceFolder(const QString &name);
    /// The files that the next request copies: each item's tool tip is a path. The items are read
    /// here and now, on the caller's thread, and not kept.
    void setSdkLogItems(const QList<QTableWidgetItem *> &items);
    /// Asks for a zip at @p zipPath. With an empty path the items are gathered, but neither packed
    /// nor told of.
    void enqueueExport(const QString &zipPath);
    /// Makes the next request that copies SDK logs pack nothing else.
    void setSdkLogOnly(bool only);
    /// Off: the worker ends, after the request in hand if there is one. On is where it begins; that
    /// does not bring back a worker that has ended.
    void setRunning(bool on);

    /// How far the request in hand is: from 0 to less than 1, without ever falling; negative: there
    /// is none. Any thread.
    [[nodiscard]] double progress() const { return exportProgress.fraction(); }

    /// When the last worker of this process was built, milliseconds since 1970.
    [[nodiscard]] static qint64 startTime();

    // The items. Each writes into the staging folder and returns whether it could; an empty path is
    // a failure. For the worker, or for anybody while it does not run.
    bool saveEventLog(const QString &staging);
    bool saveSysInfo(const QString &staging);
    bool saveNICInfo(const QString &staging);
    bool saveSystemDump(const QString &staging);
    bool saveClientDump(const QString &staging);

    /// Appends what the system tells of each memory module to the three module lists, which
    /// saveSysInfo() uses up. False: the query did not run to its end.
    bool queryMemoryModules();
    /// Whether there is a kernel dump that can be read now.
    [[nodiscard]] bool memoryDumpReadable() const;

signals:
    /// The zip of a request was packed.
    void closeWaitDlg();

protected:
    void run() override;

private:
    /// The facts of a request, taken together when its turn comes.
    struct Request
    {
        QString currentZipPath; ///< empty: the items are gathered, but not packed
        QString stagingPath;
        QString sourcePath;
        QStringList sdkLogItems;
    };
    enum class Outcome { Done, Dropped };

    bool takeRequest();
    void carryOutRequest();
    Outcome process(const Request &request);
    /// False: @p folder could not be made.
    bool copyChosenLogs(const QStringList &paths, const QString &folder);
    void copyGenTlLogs(const QString &source, const QString &folder);
    void copyAll(const QVector<FileCopy> &copies,
                 const std::function<void(const CopyResult &)> &report);
    void gatherItems(const QString &staging);
    void pack(const Request &request);
    /// For the archives in the staging folder.
    ProgressSink dumpProgress();

    const SystemProbes probes;
    std::atomic<bool> running{true};
    QMutex mutex;                  ///< guards stagingPath to requestQueue and sdkLogItems
    std::optional<Request> inHand; ///< the worker's own
    QString stagingPath;
    QString sourcePath;
    QString basePath;
    QList<QString> requestQueue;
    QList<QByteArray> partNumbers; ///< of the memory modules, one entry a module in each list
    QList<qint32> moduleSpeeds;
    QList<qint32> moduleCapacities;
    std::atomic<bool> sdkLogOnly{false};
    /// Paths of the log files to copy; nothing: a request has taken those that were handed over.
    std::optional<QStringList> sdkLogItems;
    ExportProgress exportProgress;
    qint32 comSecurityResult = 0; ///< negative: memory modules cannot be asked for
};

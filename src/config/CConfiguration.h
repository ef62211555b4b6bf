#pragma once

#include <QMap>
#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <array>
#include <atomic>

/// The hub: the user's choices of this run, shared by the windows and the export worker.
/// Written on the GUI thread; the export flags are read by the worker too and therefore atomic.
/// Nothing is saved: each run starts from the defaults below.
class CConfiguration : public QObject
{
    Q_OBJECT

public:
    /// The one hub of the process, made at the first call and destroyed at exit.
    static CConfiguration *instance();

    /// Where to put a pop-up of @p size so that it fits on a screen: at @p point, above it when the
    /// room below is too small, further left when the room to the right is too small.
    /// Global coordinates in pixels. Without a screen given, the primary one is meant.
    static QPoint fitOnScreen(const QPoint &point, const QSize &size);
    static QPoint fitOnScreen(const QPoint &point, const QSize &size, const QSize &screen);

    /// The same for a pop-up that hangs below @p rect (a button, say) or stands above it.
    static QPoint fitOnScreen(const QRect &rect, const QSize &size);
    static QPoint fitOnScreen(const QRect &rect, const QSize &size, const QSize &screen);

    QMap<QString, QString> spareMap;
    QString exportPath;    ///< the zip that the next export writes
    QString spareWorkPath; ///< set by the worker, read by nobody

    std::atomic<bool> systemLog{false};
    std::atomic<bool> sdkLog{true};
    std::atomic<bool> nicInfo{false};
    std::atomic<bool> systemInfo{false};
    std::atomic<bool> systemDump{false};
    std::atomic<bool> clientDump{false};

    // Kept for windows to come: nothing reads or writes the spare fields yet.
    std::array<bool, 2> spareFlags{true, false};
    bool spareFlag = false;
    std::array<qint64, 2> spareCounts{1000, 2000};
    std::array<bool, 8> spareSwitches{true, true, true, true, true, true, true, true};
    QString spareText;

    qint64 maxDisplayedLogs = 1000;
    qint64 updateIntervalMs = 1000;
    quint32 logLevel = 0;  ///< last level written to the SDK: 0 INFO, 1 DEBUG, 2 FATAL
    QString logConfigPath; ///< the SDK's properties file in use

signals:
    // Nothing emits these yet; windows can be wired to them later.
    void signalRestoreCfg();
    void signalRestoreDefaultCfg();
    void signalSaveConfigChanged();
    void signalLogSourceChanged(QString strCurText);
    void signalLogFilterChanged();
    void singnalExportFilterChanged();
    void signalExportLocationChanged();

private:
    CConfiguration() = default;
};

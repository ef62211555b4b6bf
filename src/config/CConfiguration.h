#pragma once

#include <QMap>
#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <array>
#include <atomic>

/// The hub: the user's choices in this run, shared by the windows and the export worker. Written on
/// the GUI thread; the export flags are atomic because the worker reads them. Nothing is saved:
/// each run starts with the defaults below.
class CConfiguration : public QObject
{
    Q_OBJECT

public:
    /// The only instance, created by the first call and destroyed at exit.
    static CConfiguration *instance();

    /// Returns the position of a pop-up of @p size that fits on the screen: at @p point, above it
    /// if there is not enough space below, further left if there is not enough space on the right.
    /// Global coordinates in pixels. The primary screen is used unless @p screen is given.
    static QPoint fitOnScreen(const QPoint &point, const QSize &size);
    static QPoint fitOnScreen(const QPoint &point, const QSize &size, const QSize &screen);

    /// The same for a pop-up below or above @p rect, such as a button.
    static QPoint fitOnScreen(const QRect &rect, const QSize &size);
    static QPoint fitOnScreen(const QRect &rect, const QSize &size, const QSize &screen);

    QMap<QString, QString> spareMap;
    QString exportPath;    ///< target of the next export
    QString spareWorkPath; ///< set when the worker is made; not read

    std::atomic<bool> systemLog{false};
    std::atomic<bool> sdkLog{true};
    std::atomic<bool> nicInfo{false};
    std::atomic<bool> systemInfo{false};
    std::atomic<bool> systemDump{false};
    std::atomic<bool> clientDump{false};

    // Reserved for future windows: the spare fields are neither read nor written.
    std::array<bool, 2> spareFlags{true, false};
    bool spareFlag = false;
    std::array<qint64, 2> spareCounts{1000, 2000};
    std::array<bool, 8> spareSwitches{true, true, true, true, true, true, true, true};
    QString spareText;

    qint64 maxDisplayedLogs = 1000;
    qint64 updateIntervalMs = 1000;
    quint32 logLevel = 0;  ///< last level written: 0 INFO, 1 DEBUG, 2 FATAL
    QString logConfigPath; ///< the SDK's properties file

signals:
    // Reserved for future windows: never emitted.
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

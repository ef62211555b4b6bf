#pragma once

#include "CameraClient.h"
#include "CommonDialog.h"
#include "LogLevelWriter.h"

#include <array>
#include <memory>
#include <string>

class QRadioButton;

namespace Ui {
class LogSettingsDlg;
}

/// The window in which the user sets the SDK's log level and says which properties file holds it.
/// Levels: 0 INFO, 1 DEBUG, 2 FATAL. Nothing is reported to the user but the level shown.
class LogSettingsDlg : public CommonDialog
{
    Q_OBJECT

public:
    /// @p client: where the camera client, and with it the SDK's properties file, is installed.
    /// Without such a file the user is asked for one before this returns.
    explicit LogSettingsDlg(QWidget *parent, const CameraClient &client = registeredCameraClient());
    ~LogSettingsDlg() override;

    /// Sets the texts again in the language that is installed now.
    void retranslate();

    /// The properties file beside the registered client; empty when there is none to read.
    [[nodiscard]] QString findDefaultLogConfig() const;

    /// Takes the level from the file at @p path; a file that names none leaves the level as it was.
    /// False when the file cannot be read.
    bool readLogLevel(const QString &path);

    /// Sets @p level in the file at @p path (UTF-8). True when both of the file's level lines were
    /// replaced. If not, the last level that was set is put back, over and over until that works,
    /// with events delivered between the attempts; then, when the file becomes unreadable or when
    /// the program or this dialog ends, the answer is false.
    bool writeLogLevel(const std::string &path, int level);

signals:
    /// The dialog closes.
    void closeWnd();

protected:
    void closeEvent(QCloseEvent *event) override;

private slots:
    void on_radioINFO_clicked();
    void on_radioDEBUG_clicked();
    void on_radioFATAL_clicked();
    void on_btnSetLogCfgPath_clicked();
    void OnAutoUpdateTimer();

private:
    [[nodiscard]] std::array<QRadioButton *, 3> levelButtons() const; ///< by level
    void setUpSpinBoxes();
    void showFile();
    void showLevel(int level);
    void showRetry();
    void focusLevel();
    void chooseLevel(int level);
    void takeOverLimits();

    std::unique_ptr<Ui::LogSettingsDlg> ui;
    int lastMaxDisplayed = 1000;   ///< as last handed to the hub
    int lastUpdateInterval = 1000; ///< likewise
    int currentLevel = 0;          ///< as last read from a file
    QString selectedConfigPath;    ///< as last chosen in the file dialog
    CameraClient client;
    LogLevelWriter writer;
    bool focusLeftLevels = false; ///< for the folder button, when they were disabled
};

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

/// The log settings: the SDK's log level and the properties file that holds it. While a level is
/// being retried for the file shown, the level buttons are disabled, show the stored level, and
/// give the reason in their tool tips; another file can be chosen meanwhile. Levels: 0 INFO, 1
/// DEBUG, 2 FATAL.
class LogSettingsDlg : public CommonDialog
{
    Q_OBJECT

public:
    /// @p client: the camera client, whose folder contains the SDK's properties file. If there is
    /// no such file, the constructor asks the user for one.
    explicit LogSettingsDlg(QWidget *parent, const CameraClient &client = registeredCameraClient());
    ~LogSettingsDlg() override;

    /// Sets all texts in the current language.
    void retranslate();

    /// The properties file in the client's folder; empty if there is no readable one.
    [[nodiscard]] QString findDefaultLogConfig() const;

    /// Reads the level from the file at @p path; a file without one leaves the level unchanged.
    /// Returns false if the file cannot be read.
    bool readLogLevel(const QString &path);

    /// Sets @p level in the file at @p path (UTF-8). Returns true if both level lines were
    /// replaced. Otherwise handles events while the stored level is retried, and returns false when
    /// the retry ends: on success, when the file becomes unreadable, or when the program or this
    /// dialog ends.
    bool writeLogLevel(const std::string &path, int level);

signals:
    /// The dialog is closing.
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
    bool focusLeftLevels = false; ///< moved to the folder button when they were disabled
};

#pragma once

#include "CWaitDialog.h"
#include "CommonDialog.h"
#include "ExportInfoDlg.h"
#include "UserEnvironment.h"

#include <QList>
#include <QStringList>
#include <QTranslator>

#include <memory>

class CLogProcessThread;
class LogSettingsDlg;
class LogViewer;
class QAction;
class QCheckBoxHeader;
class QMenu;
class QTableWidgetItem;
struct SdkLogFile;

namespace Ui {
class Vantrel;
}

/// The main window: the SDK's log files of one log source above, the export panel below. It owns
/// all other windows and the export worker.
class Vantrel : public CommonDialog
{
    Q_OBJECT

public:
    explicit Vantrel(QWidget *parent = nullptr,
                     const UserEnvironment &environment = systemEnvironment());
    /// Waits for a running export.
    ~Vantrel() override;

signals:
    /// The Export button has queued an export; opens the wait dialog.
    void showWaitDlg();

private slots:
    void on_comboSource_currentTextChanged(const QString &arg1);
    void on_btnSettings_clicked();
    void on_tableWidget_itemClicked(QTableWidgetItem *item);
    void on_tableWidget_itemDoubleClicked(QTableWidgetItem *item);
    void on_tableWidget_itemEntered(QTableWidgetItem *item);
    void on_tableWidget_customContextMenuRequested(const QPoint &pos);
    void onAllCheckStausChange(bool checked);
    void onCheckStateChange(int nState);

    void on_checkBoxSystemLog_clicked(bool checked);
    void on_checkBoxSDKLog_clicked(bool checked);
    void on_checkBoxNICInfo_clicked(bool checked);
    void on_checkBoxSystemInfo_clicked(bool checked);
    void on_checkBoxSystemDump_clicked(bool checked);
    void onCheckBoxClientDumpClicked(bool bChecked);
    void on_btnSetExportPath_clicked();
    void on_btnExport_clicked();
    void on_lineEditPath_textChanged(const QString &text);
    void onShowWaitDlg();
    void onCloseWaitDlg();
    void onShowExportInfoDlg(EN_IMAGE_MSG_MODE mode, const QString &strPath);
    void onActionExportAllTriggered();
    void onActionExportSelectedTriggered();

private:
    void setUpExportPath();
    void buildContextMenu();
    void setUpTable();
    void setUpTableKeys();
    void chooseLanguageAndStyle();
    void retranslate();
    void findSources();
    void offerSources();
    void createWindows();
    void startWorker();

    void fillTable(const QString &source);
    void readFilesAgain();
    void addRow(int row, const SdkLogFile &file);
    void setRowsChecked(bool checked);
    [[nodiscard]] QList<QTableWidgetItem *> collectRows(bool onlyChecked) const;
    enum class Scope { EveryItem, SdkLogsOnly };
    void handOver(const QList<QTableWidgetItem *> &items, Scope scope);

    std::unique_ptr<Ui::Vantrel> ui;
    UserEnvironment environment;
    QTranslator toolkitTranslator;
    QTranslator translator;     ///< fixed texts
    QTranslator hintTranslator; ///< all other texts, such as hints and tool tips
    QCheckBoxHeader *header = nullptr;
    QMenu *contextMenu = nullptr;
    QAction *actionExportAll = nullptr;
    QAction *actionExportSelected = nullptr;
    // The table owns its items and deletes them when it is refilled, so these are never
    // dereferenced.
    QTableWidgetItem *enteredItem = nullptr; ///< last one under the pointer; not read
    QTableWidgetItem *currentItem = nullptr; ///< last one right-clicked or double-clicked
    QString sdkRoot;
    QStringList sourceNames;
    bool hasClientFolder = false;
    QString currentItemPath; ///< path of the item last right-clicked; not read
    QString chosenPath;      ///< last file chosen in the save dialog
    CWaitDialog waitDialog{nullptr};
    ExportInfoDlg *exportInfo = nullptr;
    LogSettingsDlg *logSettings = nullptr;
    LogViewer *logViewer = nullptr;
    std::unique_ptr<CLogProcessThread> worker;
};

#pragma once

#include "CommonDialog.h"
#include "LineSearch.h"

#include <memory>
#include <optional>
#include <string>

class CMenuEx;
class LogSearch;
class QAction;
class QMenu;

namespace Ui {
class LogViewer;
}

/// The log viewer: shows the lines of one SDK log file in a table, hides levels and columns,
/// searches, and copies whole lines. Failures go to the debug output. GUI thread only.
class LogViewer : public CommonDialog
{
    Q_OBJECT

public:
    /// @p lineSearch runs the searches. It is called on its own thread and may outlive the window,
    /// because nobody waits for a search that cannot be stopped.
    explicit LogViewer(QWidget *parent, LineSearch lineSearch = systemLineSearch);
    ~LogViewer() override;

    /// Loads the file at @p path (UTF-8). Returns false if it is already shown or cannot be opened.
    bool openLogFile(const std::string &path);

    /// Creates the cells of @p line, a C string, in @p row of the table.
    void parseLogLine(const char *line, int row);

    /// Sets all texts in the current language.
    void retranslate();

protected:
    void closeEvent(QCloseEvent *event) override;

private slots:
    void onActionFilter(QAction *action);
    void on_btnFilter_clicked();
    void on_checkBoxINFO_clicked(bool checked);
    void on_checkBoxERROR_clicked(bool checked);
    void on_checkBoxWARN_clicked(bool checked);
    void on_checkBoxDEBUG_clicked(bool checked);
    void on_tableWidget_customContextMenuRequested(const QPoint &pos);
    void on_btnSearch_clicked();
    void onLineEditEnterPressed();
    void onActionCopyAllTriggered();
    void onActionCopySelectedTriggered();

private:
    void buildFilterMenu();
    void buildContextMenu();
    void setUpKeys();
    void reload();
    std::optional<int> load();
    void showTitle();

    std::unique_ptr<Ui::LogViewer> ui;
    QString currentLogPath;        ///< the file shown or last tried
    std::string lastSearchKeyword; ///< UTF-8; empty before the first search
    std::unique_ptr<LogSearch> search;
    QMenu *contextMenu = nullptr;
    QAction *actionCopyAll = nullptr;
    QAction *actionCopySelected = nullptr;
    CMenuEx *menuFilter = nullptr;
};

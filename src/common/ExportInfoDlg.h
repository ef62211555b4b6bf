#pragma once

#include <QDialog>
#include <QTimer>

#include <memory>

namespace Ui {
class ExportInfoDlg;
}

/// Which text the notice shows.
enum EN_IMAGE_MSG_MODE {
    EN_EXPORT_SELECTED = 0, ///< "Export selected info finished !"
    EN_EXPORT_ALL = 1       ///< "Export info finished !"
};

/// The notice that an export has finished: a small bar over its parent's area that opens the
/// folder of the zip on request and hides itself after three seconds.
class ExportInfoDlg : public QDialog
{
    Q_OBJECT

public:
    explicit ExportInfoDlg(QWidget *parent);
    ~ExportInfoDlg() override;

    /// Chooses the text; an unknown @p mode is stored and keeps the text that is shown.
    void setMode(int mode);

    /// Sets the folder that "View" opens and starts the three seconds anew. Always true.
    bool setPath(const QString &path);

    /// Sets the texts again in the language that is installed now.
    void retranslate();

signals:
    /// "View" was clicked; its folder is opened next.
    void openUrl();

protected:
    void showEvent(QShowEvent *event) override;

private slots:
    void onTimer();
    void on_btnView_clicked();

private:
    std::unique_ptr<Ui::ExportInfoDlg> ui;
    QTimer timer;
    QString path;
    int mode = EN_EXPORT_ALL;
};

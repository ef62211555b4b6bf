#pragma once

#include <QDialog>
#include <QTimer>

#include <memory>

namespace Ui {
class ExportInfoDlg;
}

/// The notice's text.
enum EN_IMAGE_MSG_MODE {
    EN_EXPORT_SELECTED = 0, ///< "Export selected info finished !"; unused, does not fit the notice
    EN_EXPORT_ALL = 1       ///< "Export info finished !"
};

/// The notice that an export has finished: a small bar over its parent that opens the zip's folder
/// on request and hides itself after three seconds.
class ExportInfoDlg : public QDialog
{
    Q_OBJECT

public:
    explicit ExportInfoDlg(QWidget *parent);
    ~ExportInfoDlg() override;

    /// Chooses the text; an unknown @p mode is stored but leaves the text unchanged.
    void setMode(int mode);

    /// Sets the folder that "View" opens and restarts the three seconds. Always returns true.
    bool setPath(const QString &path);

    /// Sets all texts in the current language.
    void retranslate();

signals:
    /// "View" was clicked; the folder is opened next.
    void openUrl();

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private slots:
    void onTimer();
    void on_btnView_clicked();

private:
    std::unique_ptr<Ui::ExportInfoDlg> ui;
    QTimer timer;
    QString path;
    int mode = EN_EXPORT_ALL;
};

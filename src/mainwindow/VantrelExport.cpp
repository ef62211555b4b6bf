#include "Vantrel.h"

#include "CConfiguration.h"
#include "CLogProcessThread.h"
#include "ModalDialog.h"
#include "QCheckBoxHeader.h"
#include "ui_Vantrel.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

// The lower half of the window: export options, export path, and exporting.

namespace {
constexpr int noticeTop = 100; // pixels below the window's upper edge
} // namespace

void Vantrel::on_checkBoxSystemLog_clicked(bool checked)
{
    CConfiguration::instance()->systemLog = checked;
}

void Vantrel::on_checkBoxSDKLog_clicked(bool checked)
{
    CConfiguration::instance()->sdkLog = checked;
    header->setChecked(checked);
    setRowsChecked(checked);
}

void Vantrel::on_checkBoxNICInfo_clicked(bool checked)
{
    CConfiguration::instance()->nicInfo = checked;
}

void Vantrel::on_checkBoxSystemInfo_clicked(bool checked)
{
    CConfiguration::instance()->systemInfo = checked;
}

void Vantrel::on_checkBoxSystemDump_clicked(bool checked)
{
    CConfiguration::instance()->systemDump = checked;
}

// Connected in startWorker() because of its name, which is part of the interface. The slots of
// other boxes are named on_checkBox…_clicked() and connected by that name.
void Vantrel::onCheckBoxClientDumpClicked(bool bChecked)
{
    CConfiguration::instance()->clientDump = bChecked;
}

void Vantrel::on_btnSetExportPath_clicked()
{
    QFileDialog dialog(nullptr, tr("Save ZIP File"), QString(), QStringLiteral("*.zip"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setViewMode(QFileDialog::List);
    dialog.setDefaultSuffix(QStringLiteral("zip"));
    dialog.setWindowFlags(Qt::Dialog | Qt::WindowCloseButtonHint);
    // Without a chosen path this is the working directory, whatever the path field shows.
    const QFileInfo chosen(chosenPath);
    dialog.setDirectory(QDir(chosen.absolutePath()));
    dialog.selectFile(chosen.fileName().isEmpty() ? QStringLiteral("UserLogInfo")
                                                  : chosen.fileName());
    if (ModalDialog::run(dialog) != QDialog::Accepted)
        return;

    const QString selected = dialog.selectedFiles().value(0);
    if (selected.isEmpty() || QFileInfo(selected).isDir())
        return; // Qt's own dialog returns its folder if no file was named
    if (selected != chosenPath) {
        ui->lineEditPath->setText(selected);
        chosenPath = selected;
    }
    CConfiguration::instance()->exportPath = ui->lineEditPath->text();
}

void Vantrel::on_btnExport_clicked()
{
    if (CConfiguration::instance()->exportPath.isEmpty())
        return;
    handOver(collectRows(true), Scope::EveryItem);
    emit showWaitDlg();
}

void Vantrel::on_lineEditPath_textChanged(const QString & /*text*/) {}

void Vantrel::onActionExportAllTriggered()
{
    handOver(collectRows(false), Scope::SdkLogsOnly);
}

void Vantrel::onActionExportSelectedTriggered()
{
    if (currentItem != nullptr)
        handOver(collectRows(true), Scope::SdkLogsOnly);
}

void Vantrel::handOver(const QList<QTableWidgetItem *> &items, Scope scope)
{
    worker->setSdkLogItems(items);
    worker->setLogSourceFolder(ui->comboSource->currentText());
    worker->enqueueExport(CConfiguration::instance()->exportPath);
    if (scope == Scope::SdkLogsOnly)
        worker->setSdkLogOnly(true);
    worker->setRunning(true);
}

void Vantrel::onShowWaitDlg()
{
    waitDialog.setTitle(tr("Export"));
    waitDialog.showAndWait(tr("Exporting information..."));
}

void Vantrel::onCloseWaitDlg()
{
    waitDialog.close();
    const QString zipPath = CConfiguration::instance()->exportPath;
    if (!zipPath.isEmpty())
        onShowExportInfoDlg(EN_EXPORT_ALL, QFileInfo(zipPath).absolutePath());
}

void Vantrel::onShowExportInfoDlg(EN_IMAGE_MSG_MODE mode, const QString &strPath)
{
    exportInfo->setMode(mode);
    exportInfo->setPath(strPath);
    exportInfo->move((width() - exportInfo->width()) / 2, noticeTop);
    exportInfo->show();
}

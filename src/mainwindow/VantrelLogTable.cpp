#include "Vantrel.h"

#include "CConfiguration.h"
#include "LogSettingsDlg.h"
#include "LogViewer.h"
#include "QCheckBoxHeader.h"
#include "QUserCheckBox.h"
#include "SdkLogFiles.h"
#include "ui_Vantrel.h"

#include <QAbstractItemView>
#include <QDebug>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>
#include <QShortcut>

// The upper half of the window: the log sources and the table of log files.

namespace {

constexpr int rowCount = 50; // fixed: only this many files are listed
constexpr int checkColumnWidth = 40;
constexpr int widestSourceList = 600; // pixels

const QLatin1String clientSource("QZviewer");

/// Makes the popup list as wide as its texts, which may be wider than the box.
void fitList(QComboBox &box)
{
    QAbstractItemView *const list = box.view();
    int width = list->sizeHintForColumn(0) + 2 * list->frameWidth();
    if (box.count() > box.maxVisibleItems())
        width += list->verticalScrollBar()->sizeHint().width();
    list->setMinimumWidth(qMin(width, widestSourceList));
}

/// The check box in @p row; null after the last file.
QCheckBox *rowCheckBox(const QTableWidget &table, int row)
{
    const QWidget *cell = table.cellWidget(row, FileTable::CheckColumn);
    return cell != nullptr ? cell->findChild<QCheckBox *>() : nullptr;
}

QString sizeText(qint64 bytes)
{
    return QString::number(bytes / 1024 + 1) + QStringLiteral(" KB");
}

} // namespace

void Vantrel::setUpTable()
{
    FileTable *table = ui->tableWidget;
    header = new QCheckBoxHeader(FileTable::CheckColumn, Qt::Horizontal, table);
    table->setHorizontalHeader(header);
    header->setChecked(true);
    connect(header, &QCheckBoxHeader::checkStausChange, this, &Vantrel::onAllCheckStausChange);

    // By default a section is at least as wide as the font's widest letter, which may be wider.
    header->setMinimumSectionSize(checkColumnWidth);
    table->setUpColumns({checkColumnWidth, 250, 300}); // labelled by retranslate()
    table->setRowCount(rowCount);
    setUpTableKeys();
}

void Vantrel::setUpTableKeys()
{
    FileTable *table = ui->tableWidget;
    setTabOrder(ui->btnSettings, header->findChild<QCheckBox *>());
    setTabOrder(header->findChild<QCheckBox *>(), table);
    const auto open = [this, table] {
        if (QTableWidgetItem *item = table->item(table->currentRow(), FileTable::NameColumn))
            on_tableWidget_itemDoubleClicked(item);
    };
    const auto toggle = [table] {
        if (QCheckBox *box = rowCheckBox(*table, table->currentRow()))
            box->toggle();
    };
    new QShortcut(Qt::Key_Return, table, this, open, Qt::WidgetShortcut);
    new QShortcut(Qt::Key_Enter, table, this, open, Qt::WidgetShortcut);
    new QShortcut(Qt::Key_Space, table, this, toggle, Qt::WidgetShortcut);
    new QShortcut(Qt::Key_F5, this, this, &Vantrel::readFilesAgain);
}

void Vantrel::findSources()
{
    sourceNames = QDir(sdkRoot).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort);
    hasClientFolder = sourceNames.contains(clientSource);
    // If there is a source, offerSources() fills the table; filling it here too would double the
    // time.
    if (sourceNames.isEmpty())
        fillTable(QString());
}

void Vantrel::offerSources()
{
    // The box may be too narrow for the text.
    connect(ui->comboSource, &QComboBox::currentTextChanged, ui->comboSource, &QWidget::setToolTip);
    ui->comboSource->addItems(sourceNames);
    fitList(*ui->comboSource);
    ui->comboSource->view()->setAccessibleName(ui->comboSource->accessibleName());
    if (hasClientFolder)
        ui->comboSource->setCurrentText(clientSource);
}

void Vantrel::readFilesAgain()
{
    FileTable &table = *ui->tableWidget;
    const auto path = [&table](int row) {
        const QTableWidgetItem *item = table.item(row, FileTable::NameColumn);
        return item != nullptr ? item->toolTip() : QString();
    };
    const QString current = path(table.currentRow());
    const int column = table.currentColumn();
    fillTable(ui->comboSource->currentText());
    for (int row = 0; !current.isEmpty() && row < table.fileCount(); ++row) {
        if (path(row) == current)
            table.setCurrentCell(row, column);
    }
}

void Vantrel::fillTable(const QString &source)
{
    ui->tableWidget->clearContents();
    if (!source.isEmpty()) {
        const auto files =
            newestSdkLogFiles(sdkRoot + QLatin1Char('/') + source, ui->tableWidget->rowCount());
        for (int row = 0; row < files.size(); ++row)
            addRow(row, files.at(row));
    }
    ui->tableWidget->setHintWhenEmpty(
        tr("The folder %1 has no logs.")
            .arg(QDir::toNativeSeparators(QDir::cleanPath(sdkRoot + source))));
    header->setChecked(CConfiguration::instance()->sdkLog);
}

void Vantrel::addRow(int row, const SdkLogFile &file)
{
    auto *cell = new QWidget;
    auto *layout = new QHBoxLayout(cell);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setAlignment(Qt::AlignCenter);
    auto *box = new QUserCheckBox(row, cell);
    box->setChecked(CConfiguration::instance()->sdkLog);
    box->setAccessibleName(file.name);
    box->setFocusPolicy(Qt::ClickFocus); // the table's own keys reach its rows
    connect(box, &QCheckBox::stateChanged, this, &Vantrel::onCheckStateChange);
    layout->addWidget(box);
    ui->tableWidget->setCellWidget(row, FileTable::CheckColumn, cell);

    const auto setText = [this, row, &file](FileTable::Column column, const QString &text) {
        auto *item = new QTableWidgetItem(text);
        item->setToolTip(file.path);
        ui->tableWidget->setItem(row, column, item);
    };
    setText(FileTable::TimeColumn, file.modified.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    setText(FileTable::NameColumn, file.name);
    setText(FileTable::SizeColumn, sizeText(file.size));
}

void Vantrel::setRowsChecked(bool checked)
{
    for (int row = 0; QCheckBox *box = rowCheckBox(*ui->tableWidget, row); ++row)
        box->setChecked(checked);
}

QList<QTableWidgetItem *> Vantrel::collectRows(bool onlyChecked) const
{
    QList<QTableWidgetItem *> items;
    for (int row = 0; const QCheckBox *box = rowCheckBox(*ui->tableWidget, row); ++row) {
        if (!onlyChecked || box->isChecked())
            items.append(ui->tableWidget->item(row, FileTable::TimeColumn));
    }
    return items;
}

void Vantrel::on_comboSource_currentTextChanged(const QString &arg1)
{
    qDebug() << arg1;
    fillTable(arg1);
}

void Vantrel::on_btnSettings_clicked()
{
    logSettings->show();
    logSettings->activateWindow();
    logSettings->setWindowModality(Qt::WindowModal);
}

void Vantrel::on_tableWidget_itemClicked(QTableWidgetItem * /*item*/) {}

void Vantrel::on_tableWidget_itemDoubleClicked(QTableWidgetItem *item)
{
    qDebug() << "open logviewer";
    currentItem = item;
    logViewer->show();
    logViewer->activateWindow();
    logViewer->openLogFile(item->toolTip().toStdString());
}

void Vantrel::on_tableWidget_itemEntered(QTableWidgetItem *item)
{
    if (item == nullptr)
        qDebug() << "item is null.";
    enteredItem = item;
}

void Vantrel::on_tableWidget_customContextMenuRequested(const QPoint &pos)
{
    QTableWidgetItem *item = ui->tableWidget->itemAt(pos);
    if (item == nullptr)
        return;
    currentItem = item;
    qDebug() << item->toolTip();
    currentItemPath = item->toolTip();
    contextMenu->move(
        CConfiguration::fitOnScreen(ui->tableWidget->mapToGlobal(pos), contextMenu->sizeHint()));
    contextMenu->show();
}

void Vantrel::onAllCheckStausChange(bool checked)
{
    setRowsChecked(checked);
}

void Vantrel::onCheckStateChange(int nState)
{
    if (nState == Qt::Unchecked)
        header->setChecked(false);
}

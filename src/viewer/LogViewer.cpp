#include "LogViewer.h"

#include "CConfiguration.h"
#include "CMenuEx.h"
#include "FreeMemory.h"
#include "LogSearch.h"
#include "ui_LogViewer.h"

#include <QActionGroup>
#include <QDebug>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScopeGuard>
#include <QShortcut>

#include <utility>

namespace {

constexpr int textWidth = 115; ///< pixels, in the column menu
constexpr int allColumns = 5;  ///< data of an action that stands for all columns

/// Shows a busy pointer, while the whole program is blocked, until the result is destroyed.
[[nodiscard]] auto busyPointer()
{
    QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    return qScopeGuard(&QGuiApplication::restoreOverrideCursor);
}

} // namespace

LogViewer::LogViewer(QWidget *parent, LineSearch lineSearch)
    : CommonDialog(parent, true, false)
    , ui(std::make_unique<Ui::LogViewer>())
{
    ui->setupUi(this);
    search = std::make_unique<LogSearch>(*ui->tableWidget, std::move(lineSearch));
    ui->mainTitleBar->showCloseButtonOnly();
    ui->mainTitleBar->setMaxMinEnabled(true);
    buildFilterMenu();
    buildContextMenu();
    connect(ui->lineEdit, &QLineEdit::returnPressed, this, &LogViewer::onLineEditEnterPressed);
    setUpKeys();
    retranslate();
    ui->tableWidget->setFocus();
}

LogViewer::~LogViewer() = default;

bool LogViewer::openLogFile(const std::string &path)
{
    if (path == currentLogPath.toStdString())
        return false;
    currentLogPath = QString::fromStdString(path);
    showTitle();
    search->cancel();
    ui->tableWidget->clearLines();
    const auto pointer = busyPointer();
    waitUntilExposed();
    if (path != currentLogPath.toStdString()) // an event has opened another file
        return false;
    const std::optional<int> lines = load();
    if (lines) {
        qDebug() << *lines;
        ui->tableWidget->removeSpareRows();
    }
    ui->tableWidget->placeCursor();
    return lines.has_value();
}

void LogViewer::parseLogLine(const char *line, int row)
{
    ui->tableWidget->setLine(line, row);
}

void LogViewer::retranslate()
{
    ui->retranslateUi(this);
    showTitle();
    actionCopyAll->setText(tr("CopyAll"));
    actionCopySelected->setText(tr("CopySelected"));
    ui->tableWidget->retranslate();
    menuFilter->ensurePolished(); // to have the skin's font
    for (QAction *action : menuFilter->actions()) {
        const int column = action->data().toInt() - 1;
        const QString header = ui->tableWidget->horizontalHeaderItem(column)->text();
        action->setText(menuFilter->fontMetrics().elidedText(header, Qt::ElideRight, textWidth));
    }
}

void LogViewer::closeEvent(QCloseEvent *event)
{
    CommonDialog::closeEvent(event);
}

void LogViewer::onActionFilter(QAction *action)
{
    const int column = action->data().toInt() - 1;
    if (column < LogRows::ColumnCount)
        ui->tableWidget->setColumnHidden(column, !action->isChecked());
    if (action->data().toInt() == allColumns) {
        for (int i = 0; i < allColumns; ++i)
            ui->tableWidget->setColumnHidden(i, !action->isChecked());
        for (QAction *filterAction : menuFilter->actions())
            filterAction->setChecked(action->isChecked());
    }
    ui->tableWidget->resetColumnWidths();
}

void LogViewer::on_btnFilter_clicked()
{
    const QRect button(ui->btnFilter->mapToGlobal(QPoint(0, 0)), ui->btnFilter->size());
    menuFilter->move(CConfiguration::fitOnScreen(button, menuFilter->sizeHint()));
    menuFilter->show();
}

void LogViewer::on_checkBoxINFO_clicked(bool checked)
{
    ui->tableWidget->setLevelHidden(QStringLiteral("INFO"), !checked);
}

void LogViewer::on_checkBoxERROR_clicked(bool checked)
{
    ui->tableWidget->setLevelHidden(QStringLiteral("ERROR"), !checked);
}

void LogViewer::on_checkBoxWARN_clicked(bool checked)
{
    ui->tableWidget->setLevelHidden(QStringLiteral("WARN"), !checked);
}

void LogViewer::on_checkBoxDEBUG_clicked(bool checked)
{
    ui->tableWidget->setLevelHidden(QStringLiteral("DEBUG"), !checked);
}

void LogViewer::on_tableWidget_customContextMenuRequested(const QPoint &pos)
{
    const QTableWidgetItem *const item = ui->tableWidget->itemAt(pos);
    if (item == nullptr)
        return;
    qDebug() << item->toolTip();
    const QPoint point = ui->tableWidget->viewport()->mapToGlobal(pos);
    contextMenu->move(CConfiguration::fitOnScreen(point, contextMenu->sizeHint()));
    contextMenu->show();
}

void LogViewer::on_btnSearch_clicked()
{
    if (ui->lineEdit->text().isEmpty())
        return;
    lastSearchKeyword = ui->lineEdit->text().toStdString();
    search->run({lastSearchKeyword, currentLogPath});
}

void LogViewer::onLineEditEnterPressed()
{
    if (ui->lineEdit->text().isEmpty() && !lastSearchKeyword.empty())
        reload();
    else
        on_btnSearch_clicked();
}

void LogViewer::onActionCopyAllTriggered()
{
    copyLines(allLines(*ui->tableWidget));
}

void LogViewer::onActionCopySelectedTriggered()
{
    copyLines(selectedLines(*ui->tableWidget));
}

void LogViewer::buildFilterMenu()
{
    menuFilter = new CMenuEx(this);
    menuFilter->setObjectName(QStringLiteral("menuFilter"));
    menuFilter->setAccessibleName(ui->btnFilter->accessibleName());
    menuFilter->setMinimumWidth(180);
    auto *group = new QActionGroup(this);
    group->setExclusive(false);
    for (int column = 0; column < LogRows::ColumnCount; ++column) {
        QAction *action = group->addAction(menuFilter->addAction(QString()));
        action->setData(column + 1);
        action->setCheckable(true);
        action->setChecked(true);
    }
    connect(group, &QActionGroup::triggered, this, &LogViewer::onActionFilter);
}

void LogViewer::buildContextMenu()
{
    contextMenu = new QMenu(this);
    contextMenu->setAccessibleName(ui->tableWidget->accessibleName());
    actionCopyAll = contextMenu->addAction(QString(), this, &LogViewer::onActionCopyAllTriggered);
    actionCopyAll->setObjectName(QStringLiteral("actionCopyAll"));
    actionCopySelected =
        contextMenu->addAction(QString(), this, &LogViewer::onActionCopySelectedTriggered);
    actionCopySelected->setObjectName(QStringLiteral("actionCopySelected"));
}

void LogViewer::setUpKeys()
{
    const auto copy = [this] {
        if (!selectedLines(*ui->tableWidget).isEmpty())
            onActionCopySelectedTriggered();
    };
    new QShortcut(QKeySequence::Copy, ui->tableWidget, this, copy, Qt::WidgetShortcut);
    new QShortcut(QKeySequence::Find, this, this,
                  [this] { ui->lineEdit->setFocus(Qt::ShortcutFocusReason); });
    new QShortcut(Qt::Key_F5, this, this, &LogViewer::reload);
    new QShortcut(Qt::Key_Escape, this, this, &LogViewer::close);
    new QShortcut(int(Qt::CTRL) | Qt::Key_W, this, this, &LogViewer::close);
}

void LogViewer::reload()
{
    if (currentLogPath.isEmpty())
        return;
    const auto pointer = busyPointer();
    const LogTable::Position position = ui->tableWidget->position();
    if (load())
        ui->tableWidget->removeSpareRows();
    ui->tableWidget->goTo(position);
    ui->tableWidget->placeCursor();
}

std::optional<int> LogViewer::load()
{
    search->cancel();
    const std::optional<int> lines = ui->tableWidget->fill(currentLogPath);
    if (!lines)
        qDebug() << "Failed to open file.";
    returnFreeMemory();
    return lines;
}

void LogViewer::showTitle()
{
    ui->mainTitleBar->setTitle(tr("LogViewer"));
    ui->mainTitleBar->setToolTip(currentLogPath);
    if (currentLogPath.isEmpty())
        return;
    QString name = QFileInfo(currentLogPath).fileName();
    name.replace(QLatin1String("[*]"), QLatin1String("[*][*]")); // Qt's modified marker
    setWindowTitle(name + QLatin1String(" - ") + QCoreApplication::translate("Vantrel", "Vantrel"));
}

#include "moc_LogViewer.cpp"

#include "LogViewer.h"

#include "CConfiguration.h"
#include "CMenuEx.h"
#include "FreeMemory.h"
#include "LogFile.h"
#include "LogSearch.h"
#include "PlainToolTip.h"
#include "ui_LogViewer.h"

#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QDeadlineTimer>
#include <QDebug>
#include <QFileInfo>
#include <QShortcut>
#include <QThread>
#include <QWindow>

#include <utility>

namespace {

constexpr int spareRows = 5;
constexpr int menuTextWidth = 115;
constexpr int longestAppearance = 500; ///< milliseconds until a window is given up waiting for
constexpr int allColumns = 5;          ///< the data of an action that stands for every column

/// The pointer while the whole program stands still.
class BusyPointer
{
public:
    BusyPointer() { QGuiApplication::setOverrideCursor(Qt::BusyCursor); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer &) = delete;
    BusyPointer &operator=(const BusyPointer &) = delete;
};

QString elided(const QWidget &menu, const QString &text)
{
    menu.ensurePolished(); // it has the skin's font only then
    return menu.fontMetrics().elidedText(text, Qt::ElideRight, menuTextWidth);
}

void copyLines(const QStringList &lines)
{
    QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')), QClipboard::Clipboard);
}

} // namespace

LogViewer::LogViewer(QWidget *parent, LineSearch lineSearch)
    : CommonDialog(parent, true, false)
    , ui(std::make_unique<Ui::LogViewer>())
{
    ui->setupUi(this);
    rows = std::make_unique<LogRows>(*ui->tableWidget);
    search = std::make_unique<LogSearch>(*ui->tableWidget, *rows, std::move(lineSearch));
    ui->mainTitleBar->setMaxButtonVisible(false);
    ui->mainTitleBar->setMinButtonVisible(false);
    ui->mainTitleBar->setMaxMinEnabled(true);
    PlainToolTip::installOn(*ui->mainTitleBar);
    showTitle();
    ui->btnFilter->setPopupMode(QToolButton::InstantPopup);
    buildFilterMenu();
    buildContextMenu();
    ui->lineEdit->clear();
    connect(ui->lineEdit, &QLineEdit::returnPressed, this, &LogViewer::onLineEditEnterPressed);
    setUpKeys();
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
    const BusyPointer pointer;
    appear();
    if (path != currentLogPath.toStdString()) // another file was opened meanwhile
        return false;
    const std::optional<int> lines = fillFromFile();
    if (lines)
        qDebug() << qMin(*lines, LogTable::capacity);
    showLines(lines);
    ui->tableWidget->placeCursor();
    returnFreeMemory();
    return lines.has_value();
}

void LogViewer::parseLogLine(const char *line, int row)
{
    rows->place(line, row);
}

void LogViewer::retranslate()
{
    ui->retranslateUi(this);
    showTitle();
    actionCopyAll->setText(tr("CopyAll"));
    actionCopySelected->setText(tr("CopySelected"));
    ui->tableWidget->retranslate();
    for (std::size_t i = 0; i < filterActions.size(); ++i)
        filterActions[i]->setText(elided(*menuFilter, tr(LogTable::headerTexts[i])));
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
        for (QAction *filterAction : filterActions)
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
    const QString keyword = ui->lineEdit->text();
    if (keyword.isEmpty())
        return;
    lastSearchKeyword = keyword.toStdString();
    const LogSearch::Outcome outcome = search->run({lastSearchKeyword, currentLogPath});
    if (outcome == LogSearch::Outcome::Failed)
        qDebug() << "Failed to execute findstr command.";
    if (outcome != LogSearch::Outcome::TakenOver)
        returnFreeMemory();
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
    for (std::size_t i = 0; i < filterActions.size(); ++i) {
        QAction *action = menuFilter->addAction(
            elided(*menuFilter, QString::fromLatin1(LogTable::headerTexts[i])));
        action->setData(static_cast<int>(i) + 1);
        action->setCheckable(true);
        action->setChecked(true);
        group->addAction(action);
        filterActions[i] = action;
    }
    connect(group, &QActionGroup::triggered, this, &LogViewer::onActionFilter);
}

void LogViewer::buildContextMenu()
{
    contextMenu = new QMenu(this);
    contextMenu->setAccessibleName(ui->tableWidget->accessibleName());
    actionCopyAll =
        contextMenu->addAction(tr("CopyAll"), this, &LogViewer::onActionCopyAllTriggered);
    actionCopyAll->setObjectName(QStringLiteral("actionCopyAll"));
    actionCopySelected =
        contextMenu->addAction(tr("CopySelected"), this, &LogViewer::onActionCopySelectedTriggered);
    actionCopySelected->setObjectName(QStringLiteral("actionCopySelected"));
}

void LogViewer::setUpKeys()
{
    QTableWidget *const table = ui->tableWidget;
    const auto onKey = [](const QKeySequence &key, QWidget *where, Qt::ShortcutContext context,
                          auto reaction) {
        auto *shortcut = new QShortcut(key, where);
        shortcut->setContext(context);
        connect(shortcut, &QShortcut::activated, where, reaction);
    };
    onKey(QKeySequence::Copy, table, Qt::WidgetShortcut, [table] {
        const QStringList lines = selectedLines(*table);
        if (!lines.isEmpty())
            copyLines(lines);
    });
    onKey(QKeySequence::Find, this, Qt::WindowShortcut,
          [this] { ui->lineEdit->setFocus(Qt::ShortcutFocusReason); });
    onKey(Qt::Key_F5, this, Qt::WindowShortcut, [this] { reload(); });
    onKey(Qt::Key_Escape, this, Qt::WindowShortcut, [this] { close(); });
    onKey(int(Qt::CTRL) | Qt::Key_W, this, Qt::WindowShortcut, [this] { close(); });
}

void LogViewer::reload()
{
    if (currentLogPath.isEmpty())
        return;
    const BusyPointer pointer;
    const LogTable::Place place = ui->tableWidget->place();
    showLines(fillFromFile());
    ui->tableWidget->goTo(place);
    returnFreeMemory();
}

std::optional<int> LogViewer::fillFromFile()
{
    LogTable &table = *ui->tableWidget;
    search->cancel();
    table.clearLines();
    table.setRowCount(LogTable::capacity);
    std::optional<int> lines;
    {
        const ModelSignalBlocker fill(table);
        // One more, which has no row, shows that the file goes on.
        lines = readLogFile(currentLogPath, LogTable::capacity + 1,
                            [this](std::string_view line, int row) { rows->place(line, row); });
    }
    if (!lines)
        qDebug() << "Failed to open file.";
    return lines;
}

void LogViewer::showLines(std::optional<int> lines)
{
    if (!lines)
        return;
    const bool goesOn = *lines > LogTable::capacity;
    const int shown = goesOn ? LogTable::capacity : *lines;
    ui->tableWidget->setRowCount(shown + spareRows);
    ui->tableWidget->setContents(
        goesOn ? LogTable::Contents::StartOfFile : LogTable::Contents::File, shown);
}

void LogViewer::showTitle()
{
    ui->mainTitleBar->setTitle(tr("LogViewer"));
    ui->mainTitleBar->setToolTip(currentLogPath);
    if (currentLogPath.isEmpty())
        return;
    QString name = QFileInfo(currentLogPath).fileName();
    name.replace(QLatin1String("[*]"), QLatin1String("[*][*]")); // else the mark of a changed file
    setWindowTitle(name + QLatin1String(" - ") + QCoreApplication::translate("Vantrel", "Vantrel"));
}

void LogViewer::appear()
{
    // A window that was only just shown appears once the window system says so.
    const QDeadlineTimer deadline(longestAppearance);
    while (isVisible() && !windowHandle()->isExposed() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QThread::msleep(1);
    }
}

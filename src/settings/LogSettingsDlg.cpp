#include "LogSettingsDlg.h"

#include "CConfiguration.h"
#include "LogLevelFile.h"
#include "ModalDialog.h"
#include "PlainToolTip.h"
#include "PropertiesFile.h"
#include "SharedFile.h"
#include "ui_LogSettingsDlg.h"

#include <QDebug>
#include <QDir>
#include <QFileDialog>
#include <QPointer>
#include <QRadioButton>
#include <QShortcut>

#include <algorithm>
#include <utility>

namespace {

constexpr int largestLimit = 100000;

int storedLevel()
{
    return int(CConfiguration::instance()->logLevel);
}

QString shownPath()
{
    return CConfiguration::instance()->logConfigPath;
}

QString reason(LogLevelRewrite::Problem problem)
{
    return problem == LogLevelRewrite::Problem::LinesMissing
               ? LogSettingsDlg::tr(
                     "The level cannot be set: this file lacks a line with "
                     "log4cpp.rootCategory or with log4cpp.category.qzsdk. Vantrel "
                     "keeps trying until both are there. You can choose another file.")
               : LogSettingsDlg::tr("The level cannot be set: this file cannot be written. Vantrel "
                                    "keeps trying. You can choose another file.");
}

QString folderOf(const CameraClient &client)
{
    const QString icon = QDir::fromNativeSeparators(client.iconPath);
    // Only the last separator counts: outside Windows a "\" before it can be part of a name.
    int end = icon.lastIndexOf(QLatin1Char('/'));
    for (const QChar separator : client.pathSeparators)
        end = std::max(end, icon.lastIndexOf(separator));
    return end < 0 ? QStringLiteral(".") : icon.left(end);
}

} // namespace

LogSettingsDlg::LogSettingsDlg(QWidget *parent, const CameraClient &registeredClient)
    : CommonDialog(parent, false, false)
    , ui(std::make_unique<Ui::LogSettingsDlg>())
    , client(registeredClient)
{
    ui->setupUi(this);
    ui->mainTitleBar->showCloseButtonOnly();
    ui->mainTitleBar->setTitle(tr("LogSettingsDlg"));
    setUpSpinBoxes();
    connect(&writer, &LogLevelWriter::retryChanged, this, [this](const QString &path) {
        if (path != shownPath())
            return;
        showLevel(storedLevel());
        showRetry();
    });
    for (QRadioButton *button : levelButtons())
        PlainToolTip::installOn(*button);
    const QString path = findDefaultLogConfig();
    if (path.isEmpty())
        on_btnSetLogCfgPath_clicked();
    else
        CConfiguration::instance()->logConfigPath = path;
    showFile();
    ui->widget->hide();
    adjustSize();
    focusLevel(); // not the title bar's button
    new QShortcut(QKeySequence::Cancel, this, this, &LogSettingsDlg::close);
}

LogSettingsDlg::~LogSettingsDlg() = default;

void LogSettingsDlg::retranslate()
{
    ui->retranslateUi(this);
    ui->mainTitleBar->setTitle(tr("LogSettingsDlg"));
    showRetry();
}

QString LogSettingsDlg::findDefaultLogConfig() const
{
    if (client.iconPath.isEmpty())
        return {};
    const QString path = folderOf(client) + QStringLiteral("/SDKLOG_default.properties");
    return isReadable(path) ? path : QString();
}

bool LogSettingsDlg::readLogLevel(const QString &path)
{
    const auto bytes = PropertiesFile::read(path);
    if (!bytes) {
        qDebug("open failed");
        return false;
    }
    currentLevel = LogLevelFile::levelNamedIn(*bytes).value_or(currentLevel);
    return true;
}

bool LogSettingsDlg::writeLogLevel(const std::string &path, int level)
{
    const QString file = QString::fromStdString(path);
    if (writer.write(file, level))
        return true;
    writer.waitForRetry(file);
    return false;
}

void LogSettingsDlg::closeEvent(QCloseEvent * /*event*/)
{
    takeOverLimits();
    emit closeWnd();
}

void LogSettingsDlg::on_radioINFO_clicked()
{
    chooseLevel(0);
}

void LogSettingsDlg::on_radioDEBUG_clicked()
{
    chooseLevel(1);
}

void LogSettingsDlg::on_radioFATAL_clicked()
{
    chooseLevel(2);
}

void LogSettingsDlg::on_btnSetLogCfgPath_clicked()
{
    QFileDialog dialog(nullptr, tr("Select Log Config File"), QString(),
                       QStringLiteral("*.properties"));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setViewMode(QFileDialog::List);
    dialog.setWindowFlags(Qt::Dialog | Qt::WindowCloseButtonHint);
    const QPointer<LogSettingsDlg> alive(this);
    if (ModalDialog::run(dialog) != QDialog::Accepted || !alive)
        return;
    const QString chosen = dialog.selectedFiles().value(0);
    if (chosen.isEmpty() || chosen == selectedConfigPath)
        return;
    selectedConfigPath = chosen;
    CConfiguration::instance()->logConfigPath = chosen;
    showFile();
}

void LogSettingsDlg::OnAutoUpdateTimer()
{
    takeOverLimits();
}

std::array<QRadioButton *, 3> LogSettingsDlg::levelButtons() const
{
    return {ui->radioINFO, ui->radioDEBUG, ui->radioFATAL};
}

void LogSettingsDlg::setUpSpinBoxes()
{
    ui->updateTimeSpinBox->setMaximum(largestLimit);
    ui->updateTimeSpinBox->setValue(lastUpdateInterval);
    ui->maxDisplaySpinBox->setMaximum(largestLimit);
    // Not lastMaxDisplayed, on purpose: the first close passes this value to the hub.
    ui->maxDisplaySpinBox->setValue(largestLimit);
}

void LogSettingsDlg::showFile()
{
    const QString path = shownPath();
    ui->lineEditPath->setText(path);
    ui->lineEditPath->setToolTip(path);
    if (readLogLevel(path))
        showLevel(writer.retryProblem(path) ? storedLevel() : currentLevel);
    showRetry();
}

void LogSettingsDlg::showLevel(int level)
{
    const auto buttons = levelButtons();
    if (level >= 0 && level < int(buttons.size()))
        buttons[size_t(level)]->setChecked(true); // unchecks the others
}

void LogSettingsDlg::showRetry()
{
    const auto problem = writer.retryProblem(shownPath());
    const QString why = problem ? reason(*problem) : QString();
    if (problem && qobject_cast<QRadioButton *>(focusWidget()) != nullptr) {
        ui->btnSetLogCfgPath->setFocus(); // choosing another file can help
        focusLeftLevels = true;
    }
    for (QRadioButton *button : levelButtons()) {
        button->setToolTip(why);
        button->setAccessibleDescription(why);
        button->setEnabled(!problem);
    }
    if (!problem && std::exchange(focusLeftLevels, false) && focusWidget() == ui->btnSetLogCfgPath)
        focusLevel();
}

void LogSettingsDlg::focusLevel()
{
    for (QRadioButton *button : levelButtons()) {
        if (button->isChecked())
            button->setFocus();
    }
}

void LogSettingsDlg::chooseLevel(int level)
{
    const QString path = shownPath();
    if (writer.retryProblem(path))
        return;
    if (writer.write(path, level)) {
        CConfiguration::instance()->logLevel = quint32(level);
        return;
    }
    // Before the retry, because another file may be shown afterwards.
    showLevel(storedLevel());
    writer.waitForRetry(path);
}

void LogSettingsDlg::takeOverLimits()
{
    CConfiguration *const hub = CConfiguration::instance();
    if (ui->maxDisplaySpinBox->value() != lastMaxDisplayed) {
        lastMaxDisplayed = ui->maxDisplaySpinBox->value();
        hub->maxDisplayedLogs = lastMaxDisplayed;
    }
    if (ui->updateTimeSpinBox->value() != lastUpdateInterval) {
        lastUpdateInterval = ui->updateTimeSpinBox->value();
        hub->updateIntervalMs = lastUpdateInterval;
    }
}

#include "moc_LogSettingsDlg.cpp"

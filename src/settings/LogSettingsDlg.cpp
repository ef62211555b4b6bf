#include "LogSettingsDlg.h"

#include "CConfiguration.h"
#include "LogLevelFile.h"
#include "LogLevelRewrite.h"
#include "ModalDialog.h"
#include "PropertiesFile.h"
#include "SharedFile.h"
#include "ui_LogSettingsDlg.h"

#include <QDebug>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileDialog>
#include <QPointer>
#include <QRadioButton>
#include <QShortcut>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int largestLimit = 100000;
// Somebody who is saving the file is left alone if none of his pauses is longer.
constexpr int shortestPause = 250; // milliseconds

int storedLevel()
{
    return int(CConfiguration::instance()->logLevel);
}

QString folderOf(const CameraClient &client)
{
    const QString icon = QDir::fromNativeSeparators(client.iconPath);
    // Only the last separator counts: before it, "\" can be part of a name outside Windows.
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
    setUpTitleBar();
    setUpSpinBoxes();
    const QString path = findDefaultLogConfig();
    if (path.isEmpty())
        on_btnSetLogCfgPath_clicked();
    else
        CConfiguration::instance()->logConfigPath = path;
    showPath();
    showFileLevel();
    ui->widget->hide();
    adjustSize();
    for (QRadioButton *button : levelButtons()) {
        if (button->isChecked())
            button->setFocus(); // not the title bar's button
    }
    new QShortcut(QKeySequence::Cancel, this, this, &LogSettingsDlg::close);
}

LogSettingsDlg::~LogSettingsDlg() = default;

void LogSettingsDlg::retranslate()
{
    ui->retranslateUi(this);
    ui->mainTitleBar->setTitle(tr("LogSettingsDlg"));
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
    LogLevelRewrite rewrite(QString::fromStdString(path));
    const LogLevelRewrite::Outcome outcome = rewrite.apply(level);
    if (outcome == LogLevelRewrite::Outcome::Failed)
        putStoredLevelBack(rewrite);
    return outcome == LogLevelRewrite::Outcome::Done;
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
    showPath();
    showFileLevel();
}

void LogSettingsDlg::OnAutoUpdateTimer()
{
    takeOverLimits();
}

std::array<QRadioButton *, 3> LogSettingsDlg::levelButtons() const
{
    return {ui->radioINFO, ui->radioDEBUG, ui->radioFATAL};
}

void LogSettingsDlg::setUpTitleBar()
{
    ui->mainTitleBar->setMinButtonVisible(false);
    ui->mainTitleBar->setMaxButtonVisible(false);
    ui->mainTitleBar->setMaxMinEnabled(false);
    ui->mainTitleBar->setTitle(tr("LogSettingsDlg"));
}

void LogSettingsDlg::setUpSpinBoxes()
{
    ui->updateTimeSpinBox->setMaximum(largestLimit);
    ui->updateTimeSpinBox->setValue(lastUpdateInterval);
    ui->maxDisplaySpinBox->setMaximum(largestLimit);
    // Not lastMaxDisplayed, on purpose: the first close hands this value to the hub.
    ui->maxDisplaySpinBox->setValue(largestLimit);
}

void LogSettingsDlg::showPath()
{
    const QString &path = CConfiguration::instance()->logConfigPath;
    ui->lineEditPath->setText(path);
    ui->lineEditPath->setToolTip(path);
}

void LogSettingsDlg::showFileLevel()
{
    if (readLogLevel(CConfiguration::instance()->logConfigPath))
        showLevel(currentLevel);
}

void LogSettingsDlg::showLevel(int level)
{
    const auto buttons = levelButtons();
    if (level >= 0 && level < int(buttons.size()))
        buttons[size_t(level)]->setChecked(true); // the buttons exclude one another
}

void LogSettingsDlg::chooseLevel(int level)
{
    if (retrying)
        return;
    CConfiguration *const hub = CConfiguration::instance();
    const QPointer<LogSettingsDlg> alive(this);
    if (writeLogLevel(hub->logConfigPath.toStdString(), level))
        hub->logLevel = quint32(level);
    else if (alive)
        showLevel(storedLevel());
}

void LogSettingsDlg::putStoredLevelBack(LogLevelRewrite &rewrite)
{
    const QPointer<LogSettingsDlg> alive(this);
    QWidget *const focused = focusWidget();
    setRetrying(true);
    const QWidget *const focusedInstead = focusWidget();

    // One loop for all rounds: entering a loop drops a request to quit that is on its way.
    QEventLoop events;
    QTimer pause;
    pause.setSingleShot(true);
    connect(this, &QObject::destroyed, &events, &QEventLoop::quit);
    connect(&pause, &QTimer::timeout, this, [&rewrite, &events, &pause] {
        QElapsedTimer work;
        work.start();
        if (rewrite.applyIfSettled(storedLevel()) != LogLevelRewrite::Outcome::Failed)
            events.quit();
        else // longer than the work on a huge file, so that the windows stay usable
            pause.start(int(std::max<qint64>(shortestPause, 4 * work.elapsed())));
    });
    pause.start(shortestPause);
    events.exec();

    if (!alive)
        return;
    setRetrying(false);
    if (focused != nullptr && focusWidget() == focusedInstead)
        focused->setFocus();
}

void LogSettingsDlg::setRetrying(bool on)
{
    retrying = on;
    for (QRadioButton *button : levelButtons())
        button->setEnabled(!on);
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

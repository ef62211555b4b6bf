#include "ExportInfoDlg.h"

#include "FocusedButton.h"
#include "Skin.h"
#include "ui_ExportInfoDlg.h"

#include <QDesktopServices>
#include <QDir>
#include <QUrl>

namespace {

constexpr int shownFor = 3000; // milliseconds

QUrl folderUrl(const QString &folder)
{
    QString text = QStringLiteral("file:///") + folder;
    // "%" first, so that the following escapes are not escaped again. A "?" is not escaped: outside
    // Windows, where names may contain it, the path ends there.
    for (const char escaped : {'%', '#', '+', ' ', '=', '&'})
        text.replace(QLatin1Char(escaped), QString::asprintf("%%%02X", escaped));
    return QUrl(text, QUrl::TolerantMode);
}

} // namespace

ExportInfoDlg::ExportInfoDlg(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::ExportInfoDlg>())
{
    ui->setupUi(this);
    setWindowFlags(Qt::SubWindow | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_TranslucentBackground, true);
    Skin::applyStyleSheet(*this);
    timer.setSingleShot(true);
    timer.setInterval(shownFor);
    connect(&timer, &QTimer::timeout, this, &ExportInfoDlg::onTimer);
}

ExportInfoDlg::~ExportInfoDlg() = default;

void ExportInfoDlg::setMode(int newMode)
{
    if (newMode == EN_EXPORT_SELECTED)
        ui->label_text->setText(tr("Export selected info finished !"));
    else if (newMode == EN_EXPORT_ALL)
        ui->label_text->setText(tr("Export info finished !"));
    setAccessibleName(ui->label_text->text()); // it has no title
    ui->btnView->setText(tr("View"));
    mode = newMode;
}

bool ExportInfoDlg::setPath(const QString &newPath)
{
    timer.start();
    path = newPath;
    return true;
}

void ExportInfoDlg::retranslate()
{
    setMode(mode);
}

void ExportInfoDlg::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!timer.isActive())
        timer.start();
}

void ExportInfoDlg::keyPressEvent(QKeyEvent *event)
{
    if (!clickFocusedButton(*this, *event))
        QDialog::keyPressEvent(event);
}

void ExportInfoDlg::onTimer()
{
    hide();
}

void ExportInfoDlg::on_btnView_clicked()
{
    emit openUrl();
    if (path.isEmpty())
        return;
    if (!QDir(path).exists() && !QDir().mkpath(path))
        return;
    QDesktopServices::openUrl(folderUrl(path));
}

#include "moc_ExportInfoDlg.cpp"

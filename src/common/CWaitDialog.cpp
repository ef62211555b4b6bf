#include "CWaitDialog.h"

#include "Skin.h"
#include "ui_CWaitDialog.h"

#include <QApplication>
#include <QMouseEvent>
#include <QMovie>
#include <QProgressBar>
#include <QScreen>

#include <chrono>
#include <utility>

namespace {

using std::chrono::milliseconds;

constexpr milliseconds shortExport{1000}; // shown without a bar
constexpr milliseconds pollInterval{100};
constexpr int steps = 1000; // for a smooth bar
constexpr QRect barPlace(116, 204, 220, 6);

} // namespace

CWaitDialog::CWaitDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::CWaitDialog>())
{
    ui->setupUi(this);
    setWindowFlags(windowFlags() | Qt::Tool | Qt::FramelessWindowHint);
    movie = std::make_unique<QMovie>(Skin::path(Skin::busyAnimation));
    ui->waitLabel->setMovie(movie.get());
    ui->lbTitle->setText(qAppName());
    setUpProgressBar();
    Skin::applyStyleSheet(*this);
}

CWaitDialog::~CWaitDialog() = default;

void CWaitDialog::setUpProgressBar()
{
    progressBar = new QProgressBar(this);
    progressBar->setObjectName(QStringLiteral("progressBar"));
    progressBar->setGeometry(barPlace);
    progressBar->setRange(0, steps);
    progressBar->setTextVisible(false);
    progressBar->hide();
    progressTimer.setTimerType(Qt::PreciseTimer); // other types may fire early
    connect(&progressTimer, &QTimer::timeout, this, &CWaitDialog::showProgress);
}

void CWaitDialog::setTitle(const QString &title)
{
    ui->lbTitle->setText(title);
    setAccessibleName(title); // the window title stays the form's
}

void CWaitDialog::setProgressSource(std::function<double()> source)
{
    progressSource = std::move(source);
}

int CWaitDialog::showAndWait(const QString &text)
{
    centreOnParent();
    ui->textLabel->setText(text);
    movie->start();
    progressBar->hide();
    progressBar->setValue(0);
    progressBar->setAccessibleName(text);
    setAccessibleDescription(QString());
    progressTimer.start(shortExport);
    const int result = exec();
    progressTimer.stop();
    return result;
}

void CWaitDialog::mousePressEvent(QMouseEvent *event)
{
    pressed = true;
    pressPos = event->pos();
}

void CWaitDialog::mouseMoveEvent(QMouseEvent *event)
{
    if (pressed)
        move(event->globalPos() - pressPos);
}

void CWaitDialog::mouseReleaseEvent(QMouseEvent * /*event*/)
{
    pressed = false;
}

void CWaitDialog::showProgress()
{
    progressTimer.setInterval(pollInterval);
    const double fraction = progressSource ? progressSource() : -1;
    if (fraction < 0)
        return;
    progressBar->setValue(qMax(progressBar->value(), int(fraction * steps)));
    progressBar->show();
    const QString percentage =
        QString::number(progressBar->value() * 100 / steps) + locale().percent();
    progressBar->setAccessibleDescription(percentage);
    setAccessibleDescription(percentage);
}

void CWaitDialog::centreOnParent()
{
    if (parentWidget() == nullptr)
        return;
    const QRect around = parentWidget()->geometry();
    const QRect area = QApplication::primaryScreen()->availableGeometry();
    const auto place = [](int start, int space, int length, int end) {
        int position = start + (space - length) / 2;
        if (position + length > end)
            position = end - length;
        return qMax(position, 0);
    };
    move(place(around.left(), around.width(), width(), area.right()),
         place(around.top(), around.height(), height(), area.bottom()));
}

#include "moc_CWaitDialog.cpp"

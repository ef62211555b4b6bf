#include "CWaitDialog.h"

#include "Skin.h"
#include "ui_CWaitDialog.h"

#include <QApplication>
#include <QMouseEvent>
#include <QMovie>
#include <QScreen>

CWaitDialog::CWaitDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::CWaitDialog>())
{
    ui->setupUi(this);
    setWindowFlags(windowFlags() | Qt::Tool | Qt::FramelessWindowHint);
    movie = std::make_unique<QMovie>(Skin::path(Skin::busyAnimation));
    ui->waitLabel->setMovie(movie.get());
    ui->lbTitle->setText(qAppName());
    Skin::applyStyleSheet(*this);
}

CWaitDialog::~CWaitDialog() = default;

void CWaitDialog::setTitle(const QString &title)
{
    ui->lbTitle->setText(title);
    setAccessibleName(title); // the window's own title is the form's
}

int CWaitDialog::showAndWait(const QString &text)
{
    centreOnParent();
    ui->textLabel->setText(text);
    movie->start();
    return exec();
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

#include "CommonTitleBar.h"

#include "PlainToolTip.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QToolButton>

CommonTitleBar::CommonTitleBar(QWidget *parent)
    : QWidget(parent)
    , btnMin(addButton(QStringLiteral("btnMin")))
    , btnMax(addButton(QStringLiteral("btnMax")))
    , btnClose(addButton(QStringLiteral("btnClose")))
    , lbTitle(new QLabel(this))
{
    lbTitle->setObjectName(QStringLiteral("lbTitle"));
    lbTitle->setAttribute(Qt::WA_MouseTracking);
    setAttribute(Qt::WA_MouseTracking);
    lbTitle->setText(QStringLiteral("Window Title"));
    window()->setWindowTitle(QStringLiteral("Window Title"));

    setUpLayout();
    retranslate();
    PlainToolTip::installOn(*this); // a path is not markup

    connect(btnClose, &QToolButton::clicked, this, [this] { window()->close(); });
    connect(btnMin, &QToolButton::clicked, this, &CommonTitleBar::showSmall);
    connect(btnMax, &QToolButton::clicked, this, &CommonTitleBar::showMaxRestore);
}

void CommonTitleBar::showCloseButtonOnly()
{
    setMinButtonVisible(false);
    setMaxButtonVisible(false);
}

void CommonTitleBar::setMaxButtonVisible(bool visible)
{
    btnMax->setVisible(visible);
}

void CommonTitleBar::setMinButtonVisible(bool visible)
{
    btnMin->setVisible(visible);
}

void CommonTitleBar::setMaxMinEnabled(bool enabled)
{
    maxMinEnabled = enabled;
}

void CommonTitleBar::setTitle(const QString &title)
{
    lbTitle->setText(title);
}

void CommonTitleBar::showSmall()
{
    if (maxMinEnabled)
        window()->showMinimized();
}

void CommonTitleBar::showMaxRestore()
{
    if (!maxMinEnabled)
        return;
    if (maximized) {
        window()->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        window()->setGeometry(normalGeometry);
        maximized = false;
        btnMax->setIcon(QIcon(restorePixmap));
    } else {
        QWidget *dialog = parentWidget();
        normalGeometry = dialog->geometry();
        dialog->setGeometry(QGuiApplication::primaryScreen()->availableGeometry());
        dialog->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        maximized = true;
        btnMax->setIcon(QIcon(maxPixmap));
    }
}

void CommonTitleBar::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    leftPressed = true;
    pressGlobalPos = event->globalPos();
    pressOffset = mapToParent(event->pos());
    QWidget::mousePressEvent(event);
}

void CommonTitleBar::mouseMoveEvent(QMouseEvent *event)
{
    // The release event is lost if another window takes the mouse.
    if (!event->buttons().testFlag(Qt::LeftButton))
        leftPressed = false;
    if (leftPressed && direction == ResizeDirection::None) {
        if (!maximized) {
            window()->move(event->globalPos() - pressOffset);
            event->accept();
        }
        return;
    }
    if (!leftPressed)
        direction = resizeDirectionAt(*this, event->globalPos());
    QWidget::mouseMoveEvent(event);
}

void CommonTitleBar::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        leftPressed = false;
    QWidget::mouseReleaseEvent(event);
}

void CommonTitleBar::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (!maxMinEnabled)
        return;
    if (event->button() == Qt::LeftButton)
        showMaxRestore();
    QWidget::mouseDoubleClickEvent(event);
}

void CommonTitleBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

QToolButton *CommonTitleBar::addButton(const QString &objectName)
{
    auto *button = new QToolButton(this);
    button->setObjectName(objectName);
    button->setAttribute(Qt::WA_MouseTracking);
    return button;
}

void CommonTitleBar::retranslate()
{
    const auto name = [](QToolButton *button, const QString &text) {
        button->setAccessibleName(text);
        button->setToolTip(text);
    };
    name(btnMin, tr("Minimize"));
    name(btnMax, tr("Maximize"));
    name(btnClose, tr("Close"));
}

void CommonTitleBar::setUpLayout()
{
    auto *outer = new QHBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto *content = new QWidget(this);
    content->setObjectName(QStringLiteral("widGlobol"));
    content->setAttribute(Qt::WA_MouseTracking);
    outer->addWidget(content);

    auto *inner = new QHBoxLayout(content);
    inner->addWidget(lbTitle);
    // Extra space goes to the minimise button; if that is hidden, as in every window, to the title.
    inner->addWidget(btnMin, 1, Qt::AlignVCenter);
    inner->addWidget(btnMax, 0, Qt::AlignVCenter);
    inner->addWidget(btnClose, 0, Qt::AlignVCenter);
    inner->addSpacing(5);
    inner->setSpacing(0);
    inner->setContentsMargins(14, 0, 0, 0);
}

#include "moc_CommonTitleBar.cpp"

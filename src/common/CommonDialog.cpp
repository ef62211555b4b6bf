#include "CommonDialog.h"

#include "FocusedButton.h"
#include "Skin.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QIcon>
#include <QMouseEvent>
#include <QThread>
#include <QWindow>

#include <array>

namespace {

constexpr int exposeTimeout = 500; // milliseconds

/// Indexed by ResizeDirection.
constexpr std::array<Qt::CursorShape, 9> cursors{
    Qt::SizeVerCursor,   Qt::SizeVerCursor,   Qt::SizeHorCursor,
    Qt::SizeHorCursor,   Qt::SizeFDiagCursor, Qt::SizeBDiagCursor,
    Qt::SizeFDiagCursor, Qt::SizeBDiagCursor, Qt::ArrowCursor};

bool isOneOf(ResizeDirection direction, ResizeDirection a, ResizeDirection b, ResizeDirection c)
{
    return direction == a || direction == b || direction == c;
}

} // namespace

CommonDialog::CommonDialog(QWidget *parent, bool isResizable, bool modal)
    : QFrame(parent)
    , resizable(isResizable)
{
    setAutoFillBackground(true);
    setAttribute(Qt::WA_MouseTracking, true);
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    if (modal)
        setWindowModality(Qt::WindowModal);
    Skin::applyStyleSheet(*this);
    // Child windows use their parent's icon, so the picture is read only once.
    if (parent == nullptr)
        setWindowIcon(QIcon(QStringLiteral(":/Resources/log.ico")));
}

void CommonDialog::waitUntilExposed()
{
    const QDeadlineTimer deadline(exposeTimeout);
    while (isVisible() && !windowHandle()->isExposed() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QThread::msleep(1);
    }
}

void CommonDialog::keyPressEvent(QKeyEvent *event)
{
    if (!clickFocusedButton(*this, *event))
        QFrame::keyPressEvent(event);
}

void CommonDialog::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        leftPressed = true;
        // On an edge no explicit grab is needed: a press grabs the mouse until the release.
        if (direction == ResizeDirection::None)
            dragOffset = event->globalPos() - frameGeometry().topLeft();
    } else if (event->button() != Qt::RightButton) {
        QWidget::mousePressEvent(event);
    }
}

void CommonDialog::mouseMoveEvent(QMouseEvent *event)
{
    // The release event is lost if another window takes the mouse.
    if (leftPressed && !event->buttons().testFlag(Qt::LeftButton))
        endDrag();
    if (resizable && !leftPressed) {
        region(event->globalPos());
    } else if (resizable && direction != ResizeDirection::None) {
        setGeometry(resizedTo(event->globalPos()));
        if (QWidget *parent = parentWidget())
            parent->update();
    }
    QWidget::mouseMoveEvent(event);
}

void CommonDialog::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        endDrag();
}

void CommonDialog::endDrag()
{
    leftPressed = false;
    if (direction != ResizeDirection::None) {
        releaseMouse();
        setCursor(Qt::ArrowCursor);
    }
}

void CommonDialog::region(const QPoint &globalPos)
{
    direction = resizeDirectionAt(*this, globalPos);
    setCursor(cursors[std::size_t(direction)]);
}

QRect CommonDialog::resizedTo(const QPoint &globalPos) const
{
    using D = ResizeDirection;
    const QPoint tl = mapToGlobal(rect().topLeft());
    const QPoint rb = mapToGlobal(rect().bottomRight());
    QRect geometry(tl, rb);
    if (isOneOf(direction, D::Left, D::LeftTop, D::LeftBottom)) {
        if (rb.x() - globalPos.x() > minimumWidth())
            geometry.setLeft(globalPos.x());
    } else if (isOneOf(direction, D::Right, D::RightTop, D::RightBottom)) {
        geometry.setWidth(globalPos.x() - tl.x());
    }
    if (isOneOf(direction, D::Up, D::LeftTop, D::RightTop)) {
        if (rb.y() - globalPos.y() > minimumHeight())
            geometry.setTop(globalPos.y());
    } else if (isOneOf(direction, D::Down, D::LeftBottom, D::RightBottom)) {
        geometry.setHeight(globalPos.y() - tl.y());
    }
    return geometry;
}

#include "moc_CommonDialog.cpp"

#pragma once

#include <QEvent>
#include <QList>
#include <QWidget>

/// A widget that records its mouse and context menu events, including those its children passed on,
/// and counts its paint events.
class EventRecorder : public QWidget
{
public:
    using QWidget::QWidget;

    QList<QEvent::Type> received;
    int paints = 0;

    QList<QEvent::Type> take()
    {
        QList<QEvent::Type> taken;
        taken.swap(received);
        return taken;
    }

protected:
    bool event(QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::ContextMenu:
            received.append(event->type());
            return true;
        case QEvent::Paint:
            ++paints;
            break;
        default:
            break;
        }
        return QWidget::event(event);
    }
};

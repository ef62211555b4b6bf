#pragma once

#include <QEvent>
#include <QObject>

/// Counts an object's events of one type. The object must outlive the counter.
class EventCount : public QObject
{
public:
    EventCount(QObject &watched, QEvent::Type counted)
        : type(counted)
    {
        watched.installEventFilter(this);
    }

    int count = 0;

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        count += event->type() == type ? 1 : 0;
        return false;
    }

private:
    const QEvent::Type type;
};

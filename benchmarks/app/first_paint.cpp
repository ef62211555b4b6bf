// Ends the program that links it, without cleanup, after the first paint of a window.

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdlib>

namespace {

class FirstPaint : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && static_cast<QWidget *>(watched)->isWindow())
            QTimer::singleShot(0, [] { std::_Exit(0); });
        return false;
    }
};

void watch()
{
    qApp->installEventFilter(new FirstPaint(qApp));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watch)

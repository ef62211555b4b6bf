// An empty Qt window, from start to first paint: the floor of bench_start.

#include "FirstPaint.h"

#include <QApplication>
#include <QWidget>

int main(int argc, char **argv)
{
    const QApplication app(argc, argv);
    QWidget window;
    window.resize(751, 612);
    FirstPaint watch;
    window.installEventFilter(&watch);
    window.show();
    return QApplication::exec();
}

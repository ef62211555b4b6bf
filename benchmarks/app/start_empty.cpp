// An empty Qt window of the main window's size, until its first paint: the baseline of bench_start.

#include <QApplication>
#include <QWidget>

int main(int argc, char **argv)
{
    const QApplication app(argc, argv);
    QWidget window;
    window.resize(751, 612);
    window.show();
    return QApplication::exec();
}

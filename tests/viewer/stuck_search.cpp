#include "LogViewer.h"

#include <QApplication>
#include <QFileInfo>
#include <QLineEdit>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <cstdio>
#include <functional>

namespace {

std::atomic<bool> isSearching{false};

bool searchForEver(const std::string & /*keyword*/, const QString & /*path*/,
                   const PieceSink & /*sink*/, const SearchStop & /*stop*/)
{
    isSearching = true;
    while (true)
        QThread::sleep(1);
}

/// Shows a viewer, starts a search, and closes the viewer while it is running.
void closeWhileSearching(LogViewer &viewer, const QString &path,
                         const std::function<bool()> &goesOn)
{
    viewer.openLogFile(path.toStdString());
    viewer.findChild<QLineEdit *>("lineEdit")->setText("x");
    viewer.show();
    QTimer closer;
    closer.callOnTimeout(&viewer, [&] {
        if (goesOn()) {
            closer.stop();
            std::printf("searching\n");
            std::fflush(stdout);
            viewer.close();
        }
    });
    closer.start(0);
    QTimer::singleShot(0, &viewer,
                       [&viewer] { QMetaObject::invokeMethod(&viewer, "on_btnSearch_clicked"); });
    QApplication::exec();
}

} // namespace

/// A program that ends while a search that cannot be stopped is running: prints "searching", closes
/// its window and exits with 0. With two arguments, a log and a file, it uses the system's search,
/// which is running once the file exists.
int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const bool own = arguments.size() == 3;
    LogViewer viewer(nullptr, own ? LineSearch(systemLineSearch) : LineSearch(searchForEver));
    closeWhileSearching(viewer, arguments.value(1), [&] {
        return own ? QFileInfo::exists(arguments.at(2)) : bool(isSearching);
    });
    return 0;
}

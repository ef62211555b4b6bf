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

/// Shows a viewer, searches, and closes it once the search goes on.
void closeWhileSearching(LogViewer &viewer, const QString &path,
                         const std::function<bool()> &goesOn)
{
    viewer.openLogFile(path.toStdString());
    viewer.findChild<QLineEdit *>(QStringLiteral("lineEdit"))->setText(QStringLiteral("x"));
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

/// A program that ends while a search of its log viewer goes on, which cannot be stopped: it says
/// "searching", closes its window and ends with 0. With two arguments, a log and a file, the search
/// is the system's own, and goes on once that file is there.
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

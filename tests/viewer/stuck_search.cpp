#include "LogViewer.h"

#include <QApplication>
#include <QLineEdit>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <cstdio>

/// A program that ends while a search of its log viewer, which cannot be stopped, goes on: it says
/// "searching", closes its window and ends with 0.
int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    static std::atomic<bool> isSearching{false};
    LogViewer viewer(nullptr, [](const auto &...) -> bool {
        std::printf("searching\n");
        std::fflush(stdout);
        isSearching = true;
        while (true)
            QThread::sleep(1);
    });
    viewer.findChild<QLineEdit *>(QStringLiteral("lineEdit"))->setText(QStringLiteral("x"));
    viewer.show();
    QTimer closer;
    closer.callOnTimeout(&viewer, [&viewer] {
        if (isSearching)
            viewer.close();
    });
    closer.start(0);
    QTimer::singleShot(0, &viewer,
                       [&viewer] { QMetaObject::invokeMethod(&viewer, "on_btnSearch_clicked"); });
    return QApplication::exec();
}

#include "SingleApplication.h"

#include <QFile>
#include <QLocalServer>
#include <QThread>

#include <cstdio>

/// A program that consists of the single-instance guard only:
///
///   guard_copy KEY          prints "first" or "second"; a first copy stays and prints each message
///                           as "message HEX", its UTF-8 bytes in hexadecimal
///   guard_copy KEY send HEX sends this message, prints "sent" or "not sent" and exits
///   guard_copy KEY stay     stays, whether first or not
///   guard_copy KEY receive  calls receiveMessage() without a connection and exits
///   guard_copy KEY end      exits; prints whether it holds the segment when its server is closed
///
/// If GUARD_COPY_WAITS_FOR names a file, it prints "ready" and waits until the file exists.
namespace {

void printLine(const QByteArray &line)
{
    std::printf("%s\n", line.constData());
    std::fflush(stdout);
}

/// Keeps zero bytes.
QString textOf(const QByteArray &utf8)
{
    return QString::fromUtf8(utf8.constData(), utf8.size());
}

/// Polls often, so that all copies see the file at the same time.
void waitForStartSignal()
{
    const QString startSignal = qEnvironmentVariable("GUARD_COPY_WAITS_FOR");
    if (startSignal.isEmpty())
        return;
    printLine("ready");
    while (!QFile::exists(startSignal))
        QThread::usleep(50);
}

void printWhenServerIsClosed(const SingleApplication &app, const QString &completeKey)
{
    QObject::connect(app.findChild<QLocalServer *>(), &QObject::destroyed, [completeKey] {
        const bool held = QSharedMemory(completeKey).attach();
        printLine(held ? "server closed, segment held" : "server closed, segment released");
    });
}

} // namespace

int main(int argc, char **argv)
{
    waitForStartSignal();
    const QString key = QString::fromLocal8Bit(argc > 1 ? argv[1] : "");
    const QByteArray command = argc > 2 ? argv[2] : "";
    SingleApplication app(argc, argv, key);
    QObject::connect(&app, &SingleApplication::messageAvailable, &app,
                     [](const QString &text) { printLine("message " + text.toUtf8().toHex()); });
    printLine(app.isRunning() ? "second" : "first");

    if (command == "send") {
        const QString text = textOf(QByteArray::fromHex(argc > 3 ? argv[3] : ""));
        printLine(app.sendMessage(text) ? "sent" : "not sent");
        return 0;
    }
    if (command == "receive") {
        app.receiveMessage();
        printLine("alive");
        return 0;
    }
    if (command == "end") {
        printWhenServerIsClosed(app, key + QCoreApplication::applicationName());
        return 0;
    }
    if (app.isRunning() && command != "stay")
        return 0;
    return QApplication::exec();
}

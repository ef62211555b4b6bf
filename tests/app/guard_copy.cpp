#include "SingleApplication.h"

#include <QFile>
#include <QThread>

#include <cstdio>

/// A program that consists of the single-instance guard only:
///
///   guard_copy KEY          prints "first" or "second"; a first copy stays and prints each message
///                           as "message HEX", its UTF-8 bytes in hexadecimal
///   guard_copy KEY send HEX sends this message, prints "sent" or "not sent" and exits
///   guard_copy KEY stay     stays, whether first or not
///   guard_copy KEY poke     calls receiveMessage() without a connection and exits
///
/// If GUARD_COPY_WAITS_FOR names a file, it prints "ready" and waits until the file exists.
namespace {

void tell(const QByteArray &line)
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
void awaitTheOthers()
{
    const QString sign = qEnvironmentVariable("GUARD_COPY_WAITS_FOR");
    if (sign.isEmpty())
        return;
    tell("ready");
    while (!QFile::exists(sign))
        QThread::usleep(50);
}

} // namespace

int main(int argc, char **argv)
{
    awaitTheOthers();
    const QString key = QString::fromLocal8Bit(argc > 1 ? argv[1] : "");
    const QByteArray wish = argc > 2 ? argv[2] : "";
    SingleApplication app(argc, argv, key);
    QObject::connect(&app, &SingleApplication::messageAvailable, &app,
                     [](const QString &text) { tell("message " + text.toUtf8().toHex()); });
    tell(app.isRunning() ? "second" : "first");

    if (wish == "send") {
        const QString text = textOf(QByteArray::fromHex(argc > 3 ? argv[3] : ""));
        tell(app.sendMessage(text) ? "sent" : "not sent");
        return 0;
    }
    if (wish == "poke") {
        app.receiveMessage();
        tell("alive");
        return 0;
    }
    if (app.isRunning() && wish != "stay")
        return 0;
    return QApplication::exec();
}

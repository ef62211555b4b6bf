#include "SingleApplication.h"

#include <QFile>
#include <QThread>

#include <cstdio>

/// A program that is nothing but its guard, for the tests to start copies of.
///
///   guard_copy KEY          tells "first" or "second"; a first copy stays and tells each message
///                           as "message HEX", the UTF-8 bytes in hexadecimal digits
///   guard_copy KEY send HEX sends that text; tells "sent" or "not sent" and ends
///   guard_copy KEY stay     stays, be it the first or not
///   guard_copy KEY poke     has receiveMessage() called although nobody connected, and ends
///
/// With the name of a file in GUARD_COPY_WAITS_FOR it tells "ready" and begins when there is one.
namespace {

void tell(const QByteArray &line)
{
    std::printf("%s\n", line.constData());
    std::fflush(stdout);
}

/// Zero bytes included.
QString textOf(const QByteArray &utf8)
{
    return QString::fromUtf8(utf8.constData(), utf8.size());
}

/// Looks often, so that all copies see the sign at the same time.
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

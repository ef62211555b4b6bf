#include "DebugCapture.h"

#include <QMutex>
#include <QMutexLocker>

#include <utility>

namespace {

QMutex mutex;
QStringList captured;
QtMessageHandler previous = nullptr;

void capture(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString &message)
{
    // Printed by the offscreen platform, not by the program.
    if (message.startsWith("This plugin does not support "))
        return;
    const QMutexLocker lock(&mutex);
    captured.append(message);
}

} // namespace

DebugCapture::DebugCapture()
{
    take();
    previous = qInstallMessageHandler(capture);
}

DebugCapture::~DebugCapture()
{
    qInstallMessageHandler(previous);
}

QStringList DebugCapture::lines() const
{
    const QMutexLocker lock(&mutex);
    // A deep copy: the thread sanitizer cannot see how Qt orders access to shared data.
    QStringList copies;
    copies.reserve(captured.size());
    for (const QString &line : std::as_const(captured))
        copies.append(line);
    return copies;
}

QStringList DebugCapture::take()
{
    const QMutexLocker lock(&mutex);
    return std::exchange(captured, {});
}

bool DebugCapture::contains(const QString &text) const
{
    return !lines().filter(text).isEmpty();
}

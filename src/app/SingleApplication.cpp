#include "SingleApplication.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QThread>

namespace {

constexpr int timeout = 1000;      // milliseconds, for each thing to wait for
constexpr int turnTimeout = 10000; // milliseconds that a copy which hangs at its start may cost
constexpr int turnInterval = 10;   // milliseconds; to settle takes a copy no longer, as a rule

/// Where a segment outlives a killed process, the last one to detach removes it: attaching to a
/// segment that nobody holds and letting go of it clears it away. One in use stays.
void clearAbandonedSegment(const QString &key)
{
    QSharedMemory abandoned(key);
    abandoned.attach();
}

/// Waits until @p turn can be locked. QLockFile's own waiting makes pauses that double: of copies
/// that start at once all would try again at the same moments, and one a moment gets its turn.
void awaitTurn(QLockFile &turn)
{
    QElapsedTimer time;
    time.start();
    while (!turn.tryLock() && turn.error() == QLockFile::LockFailedError &&
           !time.hasExpired(turnTimeout))
        QThread::msleep(turnInterval);
}

bool report(const QLocalSocket &socket)
{
    qDebug("%s", socket.errorString().toLatin1().constData());
    return false;
}

} // namespace

SingleApplication::SingleApplication(int &argc, char **argv, const QString &uniqueKey)
    : QApplication(argc, argv)
    , _uniqueKey(uniqueKey + qAppName())
{
    // One copy at a time finds out whether it is the first: of two that start at once, each would
    // take the other's attaching, which only clears, for a running copy.
    QLockFile alone(QDir::tempPath() + QLatin1Char('/') + _uniqueKey + QStringLiteral(".lock"));
    awaitTurn(alone); // the start goes on without it, too
    clearAbandonedSegment(_uniqueKey);
    sharedMemory.setKey(_uniqueKey);
    _isRunning = sharedMemory.attach();
    if (!_isRunning)
        takeOver();
}

bool SingleApplication::isRunning() const
{
    return _isRunning;
}

bool SingleApplication::sendMessage(const QString &message)
{
    if (!_isRunning)
        return false;
    auto *socket = new QLocalSocket(this);
    socket->connectToServer(_uniqueKey, QIODevice::WriteOnly);
    if (!socket->waitForConnected(timeout))
        return report(*socket);
    socket->write(message.toUtf8());
    if (!socket->waitForBytesWritten(timeout))
        return report(*socket);
    socket->disconnectFromServer();
    return true;
}

void SingleApplication::receiveMessage()
{
    QLocalSocket *socket = localServer != nullptr ? localServer->nextPendingConnection() : nullptr;
    if (socket == nullptr)
        return;
    if (!socket->waitForReadyRead(timeout)) {
        report(*socket);
        return;
    }
    // As C text: it ends at the first zero byte.
    const QString message = QString::fromUtf8(socket->readAll().constData());
    emit messageAvailable(message);
    socket->disconnectFromServer();
}

void SingleApplication::takeOver()
{
    if (!createSegment()) {
        qDebug("Unable to create single instance.");
        return;
    }
    localServer = new QLocalServer(this);
    connect(localServer, &QLocalServer::newConnection, this, &SingleApplication::receiveMessage);
    // We hold the segment, so a socket of that name is one that a killed copy left behind.
    QLocalServer::removeServer(_uniqueKey);
    localServer->listen(_uniqueKey);
}

bool SingleApplication::createSegment()
{
    if (sharedMemory.create(1))
        return true;
    // A killed copy's segment is found only now when its key file was cleared away with other
    // temporary files: the file made anew may lead to the same segment.
    if (sharedMemory.error() != QSharedMemory::AlreadyExists)
        return false;
    clearAbandonedSegment(_uniqueKey);
    return sharedMemory.create(1);
}

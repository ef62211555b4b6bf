#include "SingleApplication.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QThread>

namespace {

constexpr int timeout = 1000;      // milliseconds for each wait
constexpr int turnTimeout = 10000; // milliseconds to wait for a copy that hangs at startup
constexpr int turnInterval = 10;   // milliseconds; usually long enough for one copy

/// Where segments outlive killed processes, the last process to detach removes them: attaching to
/// an abandoned segment and detaching deletes it. A segment in use stays.
void clearAbandonedSegment(const QString &key)
{
    QSharedMemory abandoned(key);
    abandoned.attach();
}

/// Waits until @p turn can be locked. QLockFile's own wait doubles its intervals, so copies that
/// start at the same time would all retry at the same moments.
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
    // Copies take turns: otherwise each of two simultaneous starts would mistake the other's
    // attach, which only removes an abandoned segment, for a running copy.
    QLockFile alone(QDir::tempPath() + QLatin1Char('/') + _uniqueKey + QStringLiteral(".lock"));
    awaitTurn(alone); // startup continues without the lock too
    clearAbandonedSegment(_uniqueKey);
    sharedMemory.setKey(_uniqueKey);
    _isRunning = sharedMemory.attach();
    if (!_isRunning)
        takeOver();
}

SingleApplication::~SingleApplication()
{
    // Before the segment is released: closing removes the socket by name, even a new first copy's.
    delete localServer;
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
    // A C string: it ends at the first zero byte.
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
    // This process holds the segment, so an existing socket was left behind by a killed copy.
    QLocalServer::removeServer(_uniqueKey);
    localServer->listen(_uniqueKey);
}

bool SingleApplication::createSegment()
{
    if (sharedMemory.create(1))
        return true;
    // If a temporary-file cleaner has deleted a killed copy's key file, its segment is detected
    // only here: the new key file may lead to the same segment.
    if (sharedMemory.error() != QSharedMemory::AlreadyExists)
        return false;
    clearAbandonedSegment(_uniqueKey);
    return sharedMemory.create(1);
}

#include "moc_SingleApplication.cpp"

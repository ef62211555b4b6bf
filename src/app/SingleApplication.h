#pragma once

#include <QApplication>
#include <QSharedMemory>

class QLocalServer;

/// The application object, with a single-instance guard: it detects a copy of the program that
/// already runs for this user and can send it a message. GUI thread only.
class SingleApplication : public QApplication
{
    Q_OBJECT

public:
    /// @p uniqueKey names the program; the application name is appended to it.
    SingleApplication(int &argc, char **argv, const QString &uniqueKey);
    ~SingleApplication() override;

    /// True if another copy was already running.
    [[nodiscard]] bool isRunning() const;

    /// Sends @p message to the copy that was already running. Blocks for up to two seconds. Returns
    /// false, and prints the reason on the debug output, if there is no such copy or it cannot be
    /// reached.
    bool sendMessage(const QString &message);

public slots:
    /// Reads a message from a copy that connects. Blocks for up to one second.
    void receiveMessage();

signals:
    /// A copy that was started later has sent @p message.
    void messageAvailable(QString message);

private:
    void takeOver();
    [[nodiscard]] bool createSegment();

    bool _isRunning = false;
    QString _uniqueKey;
    QSharedMemory sharedMemory; ///< one byte; exists while a copy runs
    QLocalServer *localServer = nullptr;
};

#pragma once

#include <QApplication>
#include <QSharedMemory>

class QLocalServer;

/// The application object, which knows whether another copy of the program runs for this user and
/// can hand it a text. GUI thread only.
class SingleApplication : public QApplication
{
    Q_OBJECT

public:
    /// @p uniqueKey names the program; the application name is appended to it.
    SingleApplication(int &argc, char **argv, const QString &uniqueKey);

    /// True when another copy was there first.
    [[nodiscard]] bool isRunning() const;

    /// Hands @p message to the copy that was there first; waits for it one second at most for each
    /// of two steps. False: there is none or it could not be reached, told on the debug output.
    bool sendMessage(const QString &message);

public slots:
    /// Takes one text from a copy that connects; waits for it one second at most.
    void receiveMessage();

signals:
    /// A copy that was started later has handed over @p message.
    void messageAvailable(QString message);

private:
    void takeOver();
    [[nodiscard]] bool createSegment();

    bool _isRunning = false;
    QString _uniqueKey;
    QSharedMemory sharedMemory; ///< one byte that exists while a copy runs
    QLocalServer *localServer = nullptr;
};

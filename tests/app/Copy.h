#pragma once

#include <QByteArrayList>
#include <QMap>
#include <QProcess>

/// A process started by a test and killed at the end of it.
class Copy
{
public:
    /// Starts @p program in the test's environment, changed by @p variables.
    Copy(const QString &program, const QStringList &arguments,
         const QMap<QString, QString> &variables = {}, const QString &workingFolder = {});
    ~Copy();
    Copy(const Copy &) = delete;
    Copy &operator=(const Copy &) = delete;

    /// The lines it has written to standard output so far.
    [[nodiscard]] QByteArrayList output();
    /// The same for standard error, without the messages of the offscreen platform.
    [[nodiscard]] QByteArrayList errors();
    /// Waits for @p line on standard output; returns false on timeout.
    [[nodiscard]] bool waitForOutput(const QByteArray &line);
    /// Waits for a line on standard error that contains @p part; returns false on timeout.
    [[nodiscard]] bool waitForError(const QByteArray &part);
    /// Waits for its end and returns the exit code, or -1 if it crashed or did not end.
    [[nodiscard]] int exitCode();
    [[nodiscard]] bool isRunning() const { return process.state() == QProcess::Running; }
    /// Kills it without a chance to clean up.
    void kill();

private:
    void collect();

    QProcess process;
    QByteArray standardOutput;
    QByteArray standardError;
};

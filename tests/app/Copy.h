#pragma once

#include <QByteArrayList>
#include <QMap>
#include <QProcess>

/// A process that a test has started and that does not outlive it.
class Copy
{
public:
    /// Starts @p program; its surroundings are the test's own, changed by @p variables.
    Copy(const QString &program, const QStringList &arguments,
         const QMap<QString, QString> &variables = {}, const QString &workingFolder = {});
    ~Copy();
    Copy(const Copy &) = delete;
    Copy &operator=(const Copy &) = delete;

    /// The lines it has written so far.
    [[nodiscard]] QByteArrayList output();
    /// Likewise, less what the offscreen platform says that it cannot do.
    [[nodiscard]] QByteArrayList errors();
    /// Waits until @p line was written to the standard output; false: it did not come in time.
    [[nodiscard]] bool tells(const QByteArray &line);
    /// Waits for a line on the error output that contains @p part; false: none came in time.
    [[nodiscard]] bool complains(const QByteArray &part);
    /// Waits for its end; the exit code, or -1 when it did not end, or not by itself.
    [[nodiscard]] int exitCode();
    [[nodiscard]] bool isRunning() const { return process.state() == QProcess::Running; }
    /// Ends it at once, without a chance to tidy up.
    void kill();

private:
    void collect();

    QProcess process;
    QByteArray written;
    QByteArray complained;
};

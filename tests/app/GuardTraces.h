#pragma once

#include <QSharedMemory>
#include <QString>
#include <QSystemSemaphore>

/// Sets this process's folder for temporary files while it exists.
class TemporaryFiles
{
public:
    explicit TemporaryFiles(const QString &folder) { qputenv("TMPDIR", folder.toLocal8Bit()); }
    ~TemporaryFiles() { before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before); }
    TemporaryFiles(const TemporaryFiles &) = delete;
    TemporaryFiles &operator=(const TemporaryFiles &) = delete;

private:
    const QByteArray before = qgetenv("TMPDIR");
};

/// Removes at the end of a test the shared memory and the semaphore that killed copies leave. They
/// would outlive the temporary folder.
class GuardTraces
{
public:
    /// @p completeKey: the program's key followed by its name.
    GuardTraces(const QString &temporaryFolder, const QString &completeKey)
        : folder(temporaryFolder)
        , key(completeKey)
    {
    }

    ~GuardTraces()
    {
        const TemporaryFiles here(folder);
        // The last process to detach removes a segment; the creator removes a semaphore.
        QSharedMemory(key).attach();
        QSystemSemaphore(key, 1, QSystemSemaphore::Create);
    }

    GuardTraces(const GuardTraces &) = delete;
    GuardTraces &operator=(const GuardTraces &) = delete;

private:
    QString folder;
    QString key;
};

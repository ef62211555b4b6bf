#pragma once

#include <QSharedMemory>
#include <QString>
#include <QSystemSemaphore>

/// The folder for temporary files in which copies of a program find one another. Also removes the
/// system resources left by killed copies, which would outlive the folder.
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
        const QByteArray before = qgetenv("TMPDIR");
        qputenv("TMPDIR", folder.toLocal8Bit());
        // The last process to detach removes a segment; the creator removes a semaphore.
        QSharedMemory(key).attach();
        QSystemSemaphore(key, 1, QSystemSemaphore::Create);
        before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
    }

    GuardTraces(const GuardTraces &) = delete;
    GuardTraces &operator=(const GuardTraces &) = delete;

private:
    QString folder;
    QString key;
};

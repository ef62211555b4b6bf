#pragma once

#include <QSharedMemory>
#include <QString>
#include <QSystemSemaphore>

/// A folder for temporary files in which copies of a program look for one another. What killed
/// ones leave in the system's memory goes with it: it would outlive the folder.
class GuardTraces
{
public:
    /// @p completeKey: the program's key with its name behind it.
    GuardTraces(const QString &temporaryFolder, const QString &completeKey)
        : folder(temporaryFolder)
        , key(completeKey)
    {
    }

    ~GuardTraces()
    {
        const QByteArray before = qgetenv("TMPDIR");
        qputenv("TMPDIR", folder.toLocal8Bit());
        // Whoever lets go of a segment last removes it, and the maker of a semaphore likewise.
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

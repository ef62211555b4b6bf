#include "ZipTarget.h"

#include "EngineLog.h"
#include "PrivateFiles.h"

#include <QFileInfo>

#include <utility>

ZipTarget::ZipTarget(const QString &zipPath)
    : QFile(zipPath)
{
    // Opening a pipe may block, and a device would be removed after a failed write.
    const QFileInfo existing(zipPath);
    if (existing.exists() && !existing.isFile()) {
        setErrorString(QStringLiteral("not a regular file"));
    } else {
        makePrivateFile(zipPath);
        // Unbuffered, so that each write reports at once whether it succeeded.
        pending = open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
    }
    if (!pending)
        qCWarning(engineLog) << "cannot write zip" << zipPath << errorString();
}

void ZipTarget::fail(const QString &reason)
{
    if (!hasFailed())
        failure = reason;
}

bool ZipTarget::complete()
{
    if (!std::exchange(pending, false))
        return false;
    close(); // no effect if the zip writer has closed it
    if (!hasFailed())
        return true;
    qCWarning(engineLog) << "zip not written:" << fileName() << failure;
    remove();
    return false;
}

void ZipTarget::close()
{
    if (!isOpen())
        return;
    QFile::close();
    if (error() != QFileDevice::NoError)
        fail(errorString());
}

qint64 ZipTarget::writeData(const char *data, qint64 length)
{
    // After a partial write, only the next attempt reports the error.
    qint64 written = 0;
    for (qint64 more = length; more > 0 && !hasFailed(); more = length - written) {
        const qint64 taken = QFile::writeData(data + written, more);
        if (taken > 0)
            written += taken;
        else
            fail(errorString());
    }
    return written;
}

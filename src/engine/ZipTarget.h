#pragma once

#include <QFile>
#include <QString>

/// The file that a zip is written to, which only its owner may use. It remembers a write or a close
/// that failed, which the zip writers do not, and is removed then: half a zip opens nowhere. One
/// thread at a time.
class ZipTarget : public QFile
{
public:
    /// Creates the file at @p zipPath or empties the one that is there; isOpen() says whether it
    /// could.
    explicit ZipTarget(const QString &zipPath);

    /// Makes complete() remove the file, for @p reason unless there was one before.
    void fail(const QString &reason);
    [[nodiscard]] bool hasFailed() const { return !failure.isEmpty(); }

    /// Closes the file. False: it was not written whole, and is gone.
    bool complete();

    /// Called by a zip writer; complete() is needed all the same.
    void close() override;

protected:
    qint64 writeData(const char *data, qint64 length) override;

private:
    bool incomplete = false;
    QString failure;
};

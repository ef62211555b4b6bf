#pragma once

#include <QFile>
#include <QString>

/// The output file of a zip, accessible only to its owner. It records failed writes and closes,
/// which zip writers ignore, and deletes itself then. One thread at a time.
class ZipTarget : public QFile
{
public:
    /// Creates or empties the file at @p zipPath; isOpen() is false on failure. Anything but a
    /// regular file is left as it is.
    explicit ZipTarget(const QString &zipPath);

    /// Makes complete() remove the file because of @p reason, unless an earlier failure was
    /// recorded.
    void fail(const QString &reason);
    [[nodiscard]] bool hasFailed() const { return !failure.isEmpty(); }

    /// Closes the file. Returns false, and deletes the file, if it was not written completely.
    /// A second call does nothing and returns false.
    bool complete();

    /// Called by zip writers; does not replace complete().
    void close() override;

protected:
    qint64 writeData(const char *data, qint64 length) override;

private:
    bool pending = false; ///< open() succeeded and complete() has not been called
    QString failure;
};

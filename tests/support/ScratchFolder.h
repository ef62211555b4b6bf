#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QTemporaryDir>

/// A folder that a test fills as it likes; gone with the object. Names are relative, with "/", and
/// folders on the way are made. What cannot be made ends the program: no test can go on then.
class ScratchFolder
{
public:
    ScratchFolder();

    [[nodiscard]] QString path(const QString &name = {}) const;

    QString folder(const QString &name);
    QString file(const QString &name, const QByteArray &contents = {});
    QString file(const QString &name, const QByteArray &contents, const QDateTime &modified);
    /// A file of @p size zero bytes that takes no room on the disk.
    QString sparseFile(const QString &name, qint64 size);

    [[nodiscard]] QByteArray read(const QString &name) const;

private:
    QTemporaryDir dir;
};

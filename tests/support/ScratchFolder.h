#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QTemporaryDir>

/// A temporary folder for a test. Names are relative, with "/" separators; parent folders are
/// created. Failures abort the test.
class ScratchFolder
{
public:
    ScratchFolder();

    [[nodiscard]] QString path(const QString &name = {}) const;

    QString folder(const QString &name);
    QString file(const QString &name, const QByteArray &contents = {});
    QString file(const QString &name, const QByteArray &contents, const QDateTime &modified);
    /// A sparse file of @p size bytes, all zero except for @p bytes at its start, in its middle and
    /// at its end.
    QString sparseFile(const QString &name, qint64 size, const QByteArray &bytes = {});

    [[nodiscard]] QByteArray read(const QString &name) const;

private:
    QTemporaryDir dir;
};

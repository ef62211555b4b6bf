#include "ScratchFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

void insist(bool done, const QString &path)
{
    if (!done)
        qFatal("cannot prepare %s", qPrintable(path));
}

} // namespace

ScratchFolder::ScratchFolder()
{
    insist(dir.isValid(), dir.path());
}

QString ScratchFolder::path(const QString &name) const
{
    return name.isEmpty() ? dir.path() : dir.path() + '/' + name;
}

QString ScratchFolder::folder(const QString &name)
{
    insist(QDir().mkpath(path(name)), path(name));
    return path(name);
}

QString ScratchFolder::file(const QString &name, const QByteArray &contents)
{
    insist(QDir().mkpath(QFileInfo(path(name)).path()), path(name));
    QFile file(path(name));
    insist(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size(), path(name));
    return path(name);
}

QString ScratchFolder::file(const QString &name, const QByteArray &contents,
                            const QDateTime &modified)
{
    file(name, contents);
    QFile made(path(name));
    insist(made.open(QIODevice::ReadWrite) &&
               made.setFileTime(modified, QFileDevice::FileModificationTime),
           path(name));
    return path(name);
}

QString ScratchFolder::sparseFile(const QString &name, qint64 size, const QByteArray &bytes)
{
    QFile made(file(name));
    insist(made.open(QIODevice::ReadWrite) && made.resize(size), path(name));
    for (const qint64 place : {qint64(0), size / 2, size - bytes.size()})
        insist(made.seek(place) && made.write(bytes) == bytes.size(), path(name));
    return path(name);
}

QByteArray ScratchFolder::read(const QString &name) const
{
    QFile file(path(name));
    insist(file.open(QIODevice::ReadOnly), path(name));
    return file.readAll();
}

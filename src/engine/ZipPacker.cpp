#include "ZipPacker.h"

#include "EngineLog.h"
#include "ZipArchive.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

void removeFile(const QFileInfo &file)
{
    // By path: a bare name such as ":a.log" would refer to the program's resources.
    if (QFile::remove(file.filePath()) || file.isSymLink())
        return;
    // The copy of a read-only log is read-only too, which prevents its removal on Windows.
    QFile::setPermissions(file.filePath(), file.permissions() | QFileDevice::WriteOwner);
    QFile::remove(file.filePath());
}

} // namespace

bool zipFolder(const QString &folder, const QString &zipPath, const ProgressSink &progress)
{
    ZipArchive archive(zipPath, progress);
    addFolderToZip(archive, folder, folder);
    archive.write();
    if (!removeFolder(folder))
        qCWarning(engineLog) << "folder not removed:" << folder;
    archive.close();
    return true;
}

bool addFolderToZip(ZipArchive &archive, const QString &current, const QString &root)
{
    const QDir rootFolder(root);
    const QFileInfoList entries =
        QDir(current).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        if (entry.isFile()) {
            const QString name = rootFolder.relativeFilePath(entry.absoluteFilePath());
            archive.addFile(name, entry.filePath(), [=] { qDebug() << name << current << root; });
        } else if (!entry.isSymLink()) { // a linked folder may contain this one
            addFolderToZip(archive, entry.filePath(), root);
        }
    }
    return true;
}

bool removeFolder(const QString &folder)
{
    if (folder.isEmpty())
        return false;
    const QDir dir(folder);
    if (!dir.exists())
        return true;
    const QFileInfoList entries = dir.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        if (entry.isFile() || entry.isSymLink()) // remove the link, never its target
            removeFile(entry);
        else
            removeFolder(entry.absoluteFilePath());
    }
    return QDir().rmdir(dir.absolutePath());
}

#pragma once

#include <QString>
#include <QTemporaryDir>

/// A small file system. While it exists, this process's temporary folders are on it.
class SmallDisk
{
public:
    /// Gives this process the right to mount, invisibly to other processes. Call it first, before
    /// there is a second thread. Returns why it failed, or an empty text.
    [[nodiscard]] static QString prepare();

    SmallDisk(qint64 bytes, int files);
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    /// Why it could not be mounted; empty on success.
    [[nodiscard]] QString trouble() const { return problem; }

    [[nodiscard]] qint64 freeBytes() const;
    [[nodiscard]] qint64 freeFiles() const;
    /// Fills the disk except for @p bytes.
    void leaveBytes(qint64 bytes);
    /// Uses all inodes except for @p files.
    void leaveFiles(qint64 files);
    /// Frees what these two used.
    void makeRoom();
    /// Remounts it read-only or read-write.
    void setReadOnly(bool on);

private:
    QTemporaryDir mountPoint;
    QByteArray temporaryBefore;
    QString problem;
    QString options;
};

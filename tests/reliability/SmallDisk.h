#pragma once

#include <QString>
#include <QTemporaryDir>

/// A disk of few bytes, a real one as far as a program can tell. While it lives, temporary folders
/// of this process lie on it.
class SmallDisk
{
public:
    /// Makes this process one that may have disks of its own, without a trace for any other. To be
    /// called first of all, before there is a second thread. Returns why it cannot be done, or an
    /// empty text.
    [[nodiscard]] static QString prepare();

    SmallDisk(qint64 bytes, int files);
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    /// Why there is no such disk; empty: it is there.
    [[nodiscard]] QString trouble() const { return problem; }

    [[nodiscard]] qint64 freeBytes() const;
    [[nodiscard]] qint64 freeFiles() const;
    /// Takes all the room but so much.
    void leaveBytes(qint64 bytes);
    /// Takes all the places for files and folders but so many.
    void leaveFiles(qint64 files);
    /// Gives back what these two took.
    void makeRoom();
    /// Whether anything can be written to it.
    void setReadOnly(bool on);

private:
    QTemporaryDir mountPoint;
    QByteArray temporaryBefore;
    QString problem;
    QString options;
};

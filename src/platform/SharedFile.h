#pragma once

#include <QFile>
#include <QString>

/// Opens @p file, whose name is set, for unbuffered reading, in such a way that whoever writes the
/// file can go on writing, rename and delete it. Only regular files are opened: a folder, a pipe or
/// a device is refused at once, without waiting for anything. False: not opened. Any thread.
[[nodiscard]] bool openShared(QFile &file);

/// Whether openShared() could open the file at @p path now. Any thread.
[[nodiscard]] inline bool isReadable(const QString &path)
{
    QFile file(path);
    return openShared(file);
}

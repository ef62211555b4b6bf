#pragma once

#include <QFile>
#include <QString>

/// Opens @p file, whose name is set, for unbuffered reading. Other programs can write, rename and
/// delete it meanwhile. Only regular files are opened: folders, pipes and devices are rejected
/// without blocking. Any thread.
[[nodiscard]] bool openShared(QFile &file);

/// Whether openShared() could open the file at @p path now. Any thread.
[[nodiscard]] inline bool isReadable(const QString &path)
{
    QFile file(path);
    return openShared(file);
}

#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

/// What the zip at @p path holds, by entry name. A file that is no zip ends the program's test with
/// an entry named "not a zip".
[[nodiscard]] QMap<QString, QByteArray> zipContents(const QString &path);

/// The names of the entries in the order in which they were written.
[[nodiscard]] QStringList zipEntryNames(const QString &path);

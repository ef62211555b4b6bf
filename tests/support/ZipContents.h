#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

/// The contents of the zip at @p path by entry name. For a file that is not a zip, the only entry
/// is named "not a zip".
[[nodiscard]] QMap<QString, QByteArray> zipContents(const QString &path);

/// The first difference between two such contents, in words; empty if there is none.
[[nodiscard]] QString difference(const QMap<QString, QByteArray> &found,
                                 const QMap<QString, QByteArray> &expected);

/// The entry names in the order of the directory; "not a zip" for a file that is none.
[[nodiscard]] QStringList zipEntryNames(const QString &path);

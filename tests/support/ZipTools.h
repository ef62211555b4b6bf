#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

// Zips of whole exports are held against three tools that know nothing of one another: Info-ZIP,
// 7-Zip and Python.

/// What one of the tools says against the zip at @p path; empty: each calls it whole and tells the
/// names in their order, the checksums and the contents just as zipContents() does. A tool that is
/// missing is a complaint too, except on Windows, where none is looked for.
[[nodiscard]] QString zipToolsComplaint(const QString &path);

/// What the zip at @p path holds, by entry name, as all tools agree; otherwise the sole entry is
/// named by a complaint.
[[nodiscard]] QMap<QString, QByteArray> verifiedZipContents(const QString &path);

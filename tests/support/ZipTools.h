#pragma once

#include "ScratchFolder.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

// Zips of whole exports are held against three tools that know nothing of one another: Info-ZIP,
// 7-Zip and Python.

/// What one of the tools says against the zips at @p paths; empty: each calls each whole and tells
/// the names in their order, the checksums and the contents just as zipContents() does. A tool that
/// is missing is a complaint too, except on Windows, where none is looked for.
[[nodiscard]] QString zipToolsComplaint(const QStringList &paths);

/// A file, and the entry that it became.
struct PackedFile
{
    QString name;
    QString path;
};

/// Likewise for one zip of any size, which has to hold the @p originals in their order. Nothing of
/// it is taken into memory. On Windows libzip stands in for the tools.
[[nodiscard]] QString zipToolsComplaint(const QString &zip, const QVector<PackedFile> &originals);

/// What the zip at @p path holds, by entry name, as all tools agree; otherwise the sole entry is
/// named by a complaint.
[[nodiscard]] QMap<QString, QByteArray> verifiedZipContents(const QString &path);

/// Copies of zips that a test came by, to be looked at all at once, which is quicker.
class KeptZips
{
public:
    /// Keeps the zip at @p path, if there is one.
    void keep(const QString &path);

    [[nodiscard]] int count() const { return paths.size(); }
    [[nodiscard]] QString complaint() const { return zipToolsComplaint(paths); }

private:
    ScratchFolder folder;
    QStringList paths;
};

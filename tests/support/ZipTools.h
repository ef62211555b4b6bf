#pragma once

#include "ScratchFolder.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

// Checks of exported zips by three independent tools: Info-ZIP, 7-Zip and Python.

/// Returns a tool's complaint about the zips at @p paths; empty if all tools accept all of them and
/// list the same names, checksums and contents as zipContents(). A missing tool is a complaint too,
/// except on Windows.
[[nodiscard]] QString zipToolsComplaint(const QStringList &paths);

/// A file and its entry in the zip.
struct PackedFile
{
    QString name;
    QString path;
};

/// The same for one zip of any size with the @p originals, in order. Does not load contents into
/// memory. On Windows libzip replaces the tools.
[[nodiscard]] QString zipToolsComplaint(const QString &zip, const QVector<PackedFile> &originals);

/// The contents of the zip at @p path by entry name, if all tools agree; otherwise the only entry
/// is named after a complaint.
[[nodiscard]] QMap<QString, QByteArray> verifiedZipContents(const QString &path);

/// Collects copies of zips, to be checked together, which is faster.
class KeptZips
{
public:
    /// Copies the zip at @p path, if it exists.
    void keep(const QString &path);

    [[nodiscard]] int count() const { return paths.size(); }
    [[nodiscard]] QString complaint() const { return zipToolsComplaint(paths); }

private:
    ScratchFolder folder;
    QStringList paths;
};

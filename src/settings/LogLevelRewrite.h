#pragma once

#include <QByteArray>
#include <QString>

#include <bitset>
#include <functional>
#include <optional>

/// The whole of the file at @p path; nothing, with a line on the debug output, when it cannot be
/// opened or read. Folders, devices and files beyond any properties file's size count as
/// unreadable.
[[nodiscard]] std::optional<QByteArray> readPropertiesFile(const QString &path);

/// Gives the existing file at @p path the contents @p bytes, in place: on most file systems an
/// overwritten part needs no new room, so that only growth can fail on a full disk. False when it
/// could not be done entirely; a missing file is not made.
[[nodiscard]] bool overwriteFile(const QString &path, const QByteArray &bytes);

/// Setting the level in one properties file, as often as it takes. The user's text is never lost to
/// a disk that fails meanwhile: it is put back at once, and if that fails too it is kept here and
/// the next attempt starts from it, unless somebody else has written the file by then. What goes
/// wrong is said on the debug output, each problem once however many attempts meet it.
class LogLevelRewrite
{
public:
    enum class Outcome {
        Done,      ///< both lines now name the level
        Failed,    ///< a line is missing or the file could not be written
        Unreadable ///< the file could not be read, nothing was written
    };
    using Overwrite = std::function<bool(const QString &path, const QByteArray &bytes)>;

    /// @p overwrite stands for the disk.
    explicit LogLevelRewrite(const QString &path, Overwrite overwrite = overwriteFile);
    /// A text that could still not be put back is tried once more, unless the file is gone.
    ~LogLevelRewrite();
    LogLevelRewrite(const LogLevelRewrite &) = delete;
    LogLevelRewrite &operator=(const LogLevelRewrite &) = delete;

    /// Reads the file anew and rewrites it for @p level. A file that has the wanted contents
    /// already is only checked for being writable.
    Outcome apply(int level);

private:
    [[nodiscard]] bool read();
    [[nodiscard]] bool store(const QByteArray &bytes);
    void putBack();

    enum class Problem { NotWritable, NotWritten, NotRestored, LinesMissing };
    void report(Problem problem);

    QString path;
    Overwrite overwrite;
    QByteArray original;           ///< the user's file, byte for byte
    bool partiallyWritten = false; ///< a failed write was not undone: only original is whole
    std::optional<QByteArray>
        partialContents;     ///< what the torn file holds, as far as it could be read
    std::bitset<4> reported; ///< by Problem
};

#pragma once

#include "PropertiesFile.h"

#include <QString>

#include <bitset>
#include <optional>
#include <string>
#include <string_view>

/// Setting the level in one properties file, as often as it takes. The user's text is never lost to
/// a disk that fails meanwhile: it is put back at once, and if that fails too it is kept here and
/// the next attempt starts from it, unless somebody else has written the file by then. A file that
/// cannot be read is reported as "open failed" on the debug output; the category reports all other
/// problems, each once however many attempts meet it. One thread at a time.
class LogLevelRewrite
{
public:
    enum class Outcome {
        Done,      ///< both lines now name the level
        Failed,    ///< a line is missing, or the file was not written
        Unreadable ///< the file could not be read, nothing was written
    };
    enum class Problem { LinesMissing, NotWritable, NotWritten, NotRestored, TooLarge };

    explicit LogLevelRewrite(const QString &filePath, PropertiesFile::Disk theDisk = {});
    /// A text that could still not be put back is tried once more, unless the file is gone.
    ~LogLevelRewrite();
    LogLevelRewrite(const LogLevelRewrite &) = delete;
    LogLevelRewrite &operator=(const LogLevelRewrite &) = delete;

    /// Reads the file and writes it anew for @p level.
    Outcome apply(int level);

    /// Likewise, but does not write while somebody else may be saving the file: its size and time
    /// have to be what they were at the last call. Nor does it write what the file holds already.
    Outcome applyIfSettled(int level);

    /// What the last failure was due to; nothing before the first.
    [[nodiscard]] std::optional<Problem> problem() const { return lastProblem; }

private:
    using Stamp = PropertiesFile::Stamp;

    [[nodiscard]] std::optional<std::string> read();
    Outcome rewrite(std::string found, int level, const std::optional<Stamp> &settled);
    bool write(std::string &found, std::string_view bytes);
    void putBack();
    void report(Problem problem);

    /// What there is to know while the file does not hold the user's text.
    struct Torn
    {
        std::string text;                 ///< the user's, byte for byte
        std::optional<std::string> found; ///< what the file holds instead, if it could be read
    };

    QString path;
    PropertiesFile::Disk disk;
    std::optional<Torn> torn;
    std::optional<Stamp> lastSeen; ///< by applyIfSettled()
    std::optional<Problem> lastProblem;
    std::bitset<5> reported; ///< by Problem
};

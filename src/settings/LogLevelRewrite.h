#pragma once

#include "PropertiesFile.h"

#include <QString>

#include <bitset>
#include <optional>
#include <string>
#include <string_view>

/// Sets the level in one properties file, in as many attempts as necessary. A failed write never
/// loses the user's text: it is restored at once or, if that fails too, kept here for the next
/// attempt, unless another program has written the file by then. A file that cannot be read is
/// reported as "open failed" on the debug output; all other problems are logged once each, however
/// many attempts meet them. One thread at a time.
class LogLevelRewrite
{
public:
    enum class Outcome {
        Done,      ///< both lines name the level
        Failed,    ///< a line is missing, writing failed, or another program is saving the file
        Unreadable ///< reading failed, or there is too little memory; nothing was written
    };
    enum class Problem { LinesMissing, NotWritable, NotWritten, NotRestored, TooLarge };

    explicit LogLevelRewrite(const QString &filePath, PropertiesFile::Disk theDisk = {});
    /// Makes a last attempt to restore the user's text, unless the file is gone.
    ~LogLevelRewrite();
    LogLevelRewrite(const LogLevelRewrite &) = delete;
    LogLevelRewrite &operator=(const LogLevelRewrite &) = delete;

    /// Reads the file and rewrites it for @p level, even if that changes nothing.
    Outcome apply(int level);

    /// The same, but only if the file's size and time have not changed since the last call, since
    /// another program may be saving it, and only if the contents change.
    Outcome applyIfSettled(int level);

    /// The reason for the last failure; nullopt before the first.
    [[nodiscard]] std::optional<Problem> problem() const { return lastProblem; }

private:
    using Stamp = PropertiesFile::Stamp;

    [[nodiscard]] std::optional<std::string> read();
    Outcome rewrite(std::string found, int level, const std::optional<Stamp> &settled);
    bool write(std::string &found, std::string_view bytes);
    void putBack();
    void report(Problem problem);

    /// The state while the file does not hold the user's text.
    struct PartialWrite
    {
        std::string text;                 ///< the user's text, byte for byte
        std::optional<std::string> found; ///< the file's contents, if readable
    };

    QString path;
    PropertiesFile::Disk disk;
    std::optional<PartialWrite> partialWrite;
    std::optional<Stamp> lastSeen; ///< at the last applyIfSettled()
    std::optional<Problem> lastProblem;
    std::bitset<5> reported; ///< indexed by Problem
};

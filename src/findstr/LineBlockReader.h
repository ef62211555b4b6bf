#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>

class QIODevice;
class QString;

/// Reads a text in blocks of whole lines of any length. CR LF and LF end a line and are returned as
/// LF; all other bytes, including a lone CR, are content.
class LineBlockReader
{
public:
    static constexpr std::size_t blockBytes = std::size_t{256} << 10; ///< fits in a processor cache
    static constexpr std::size_t maxLineBytes = std::size_t{64} << 20;

    /// @p device must be open for reading and outlive this object. Lines are truncated to @p
    /// longestLine bytes, at least blockBytes.
    explicit LineBlockReader(QIODevice &device, std::size_t longestLine = maxLineBytes);

    /// Returns the next lines with their line feeds; only the last line of the text may lack one.
    /// Empty at the end of the text, even if the text grows after that. Valid until the next call.
    /// Throws std::bad_alloc.
    [[nodiscard]] std::string_view next();

    /// Reading failed before the end of the text.
    [[nodiscard]] bool failed() const { return readFailed; }
    /// Some line so far was truncated.
    [[nodiscard]] bool hasTruncatedLines() const { return lineTruncated; }
    /// Logs failed() and hasTruncatedLines(), if true, for the file at @p path.
    void logProblems(const QString &path) const;

private:
    bool readMore();
    void grow();
    void truncateLongLine(std::size_t firstNew);

    QIODevice &source;
    const std::size_t lineLimit;
    struct Release
    {
        void operator()(char *memory) const { std::free(memory); }
    };
    /// From realloc(): grows in place where possible, and is not zero-filled.
    std::unique_ptr<char, Release> buffer;
    std::size_t capacity = 0;
    std::size_t used = 0;      ///< bytes in the buffer
    std::size_t delivered = 0; ///< bytes at its start that the last call returned
    bool ended = false;        ///< the end of the text was returned
    bool readFailed = false;
    bool lineTruncated = false;
};

/// Replaces each CR LF in the @p size bytes at @p text by LF, in place. Returns the new size.
[[nodiscard]] std::size_t unifyLineEnds(char *text, std::size_t size);

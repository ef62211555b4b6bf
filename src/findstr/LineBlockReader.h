#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>

class QIODevice;
class QString;

/// Reads a text in blocks of whole lines, however long a line is. CR LF and LF both end a line and
/// come out as LF; any other byte, a lone CR among them, is content.
class LineBlockReader
{
public:
    static constexpr std::size_t blockBytes = std::size_t{256} << 10; ///< fits a processor's cache
    static constexpr std::size_t maxLineBytes = std::size_t{64} << 20;

    /// @p device must be open for reading and outlive this object. What a line has beyond
    /// @p longestLine bytes, which are blockBytes at least, is left out.
    explicit LineBlockReader(QIODevice &device, std::size_t longestLine = maxLineBytes);

    /// The next lines, each with its line feed, which only the last line of the text may lack.
    /// Empty: the text has ended. Valid until the next call.
    [[nodiscard]] std::string_view next();

    /// The text has ended too early, because the device could not be read any further.
    [[nodiscard]] bool failed() const { return readFailed; }
    /// A line so far was longer than the longest, and was truncated.
    [[nodiscard]] bool hasTruncatedLines() const { return lineTruncated; }
    /// Logs failed() and hasTruncatedLines() of the file at @p path, where they are true.
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
    /// Grows in place where the system can, and is not filled with zeros first.
    std::unique_ptr<char, Release> buffer;
    std::size_t capacity = 0;
    std::size_t used = 0;      ///< bytes in the buffer
    std::size_t delivered = 0; ///< bytes at its start that the last call handed out
    bool readFailed = false;
    bool lineTruncated = false;
};

/// Turns each CR LF of the @p size bytes at @p text into LF, in place. Returns the new size.
[[nodiscard]] std::size_t unifyLineEnds(char *text, std::size_t size);

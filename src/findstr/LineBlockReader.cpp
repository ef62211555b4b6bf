#include "LineBlockReader.h"

#include "FindstrLog.h"

#include <QIODevice>
#include <QString>

#include <algorithm>
#include <cstring>
#include <new>

namespace {

std::size_t lastLineEnd(const char *text, std::size_t size)
{
    // Searching forwards is many times faster, and most blocks of a long line hold no line feed.
    return std::memchr(text, '\n', size) != nullptr ? std::string_view(text, size).rfind('\n')
                                                    : std::string_view::npos;
}

} // namespace

LineBlockReader::LineBlockReader(QIODevice &device, std::size_t longestLine)
    : source(device)
    , lineLimit(std::max(longestLine, blockBytes))
{
    grow();
}

std::string_view LineBlockReader::next()
{
    if (ended)
        return {};
    used -= delivered;
    std::memmove(buffer.get(), buffer.get() + delivered, used);
    delivered = 0;
    // The remainder is the beginning of a line and holds no line feed.
    for (std::size_t firstNew = used; readMore(); firstNew = used) {
        truncateLongLine(firstNew);
        const std::size_t end = lastLineEnd(buffer.get() + firstNew, used - firstNew);
        if (end == std::string_view::npos)
            continue;
        delivered = firstNew + end + 1;
        return {buffer.get(), unifyLineEnds(buffer.get(), delivered)};
    }
    ended = true;
    return {buffer.get(), used};
}

void LineBlockReader::logProblems(const QString &path) const
{
    if (readFailed)
        qCWarning(findstrLog).noquote() << "read failed:" << path;
    if (lineTruncated)
        qCWarning(findstrLog).noquote()
            << "line longer than" << lineLimit << "bytes truncated:" << path;
}

bool LineBlockReader::readMore()
{
    if (used == capacity)
        grow();
    const std::size_t room = std::min(capacity - used, blockBytes);
    const qint64 count = source.read(buffer.get() + used, static_cast<qint64>(room));
    readFailed = readFailed || count < 0;
    if (count <= 0)
        return false;
    used += static_cast<std::size_t>(count);
    return true;
}

void LineBlockReader::grow()
{
    const std::size_t wanted = std::max(capacity * 2, blockBytes);
    auto *const grown = static_cast<char *>(std::realloc(buffer.get(), wanted));
    if (grown == nullptr)
        throw std::bad_alloc();
    (void)buffer.release(); // freed or reused by realloc
    buffer.reset(grown);
    capacity = wanted;
}

void LineBlockReader::truncateLongLine(std::size_t firstNew)
{
    // Only a line that began before this block can be longer than a block.
    char *const text = buffer.get();
    const void *const found = std::memchr(text + firstNew, '\n', used - firstNew);
    const std::size_t lineEnd =
        found != nullptr ? static_cast<std::size_t>(static_cast<const char *>(found) - text) : used;
    if (lineEnd <= lineLimit)
        return;
    lineTruncated = true;
    std::memmove(text + lineLimit, text + lineEnd, used - lineEnd);
    used -= lineEnd - lineLimit;
}

std::size_t unifyLineEnds(char *text, std::size_t size)
{
    const char *const end = text + size;
    const char *from = text;
    char *to = text;
    while (from < end) {
        const auto left = static_cast<std::size_t>(end - from);
        const char *const cr = static_cast<const char *>(std::memchr(from, '\r', left));
        const char *const stop = cr != nullptr ? cr : end;
        const auto count = static_cast<std::size_t>(stop - from);
        if (to != from)
            std::memmove(to, from, count);
        to += count;
        from = stop;
        if (cr != nullptr && (cr + 1 == end || cr[1] != '\n'))
            *to++ = *from;
        if (cr != nullptr)
            ++from;
    }
    return static_cast<std::size_t>(to - text);
}

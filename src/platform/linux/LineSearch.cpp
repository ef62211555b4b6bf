#include "LineSearch.h"

#include "LineBlockReader.h"
#include "LineFilter.h"
#include "SharedFile.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cstring>

namespace {

void passInPieces(std::string_view line, const PieceSink &sink, const SearchStop &stop)
{
    std::array<char, maxPieceBytes + 1> piece;
    while (!line.empty() && !stop) {
        const std::size_t size = std::min(line.size(), maxPieceBytes);
        std::memcpy(piece.data(), line.data(), size);
        piece[size] = '\0';
        sink(piece.data());
        line.remove_prefix(size);
    }
}

} // namespace

bool systemLineSearch(const std::string &keyword, const QString &path, const PieceSink &sink,
                      const SearchStop &stop)
{
    QFile file(path);
    if (!openShared(file))
        return false;
    const LineFilter filter(keyword);
    if (!filter.isValid())
        return false;
    if (filter.matchesNothing())
        return true;
    // Read, not mapped: truncating a mapped file would kill this process.
    LineBlockReader blocks(file);
    const auto found = [&sink, &stop](std::string_view line) { passInPieces(line, sink, stop); };
    for (std::string_view block; !stop && !(block = blocks.next()).empty();)
        filter.forEachLine(block, found);
    blocks.logProblems(path);
    return true;
}

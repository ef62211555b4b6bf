#pragma once

#include <QString>

#include <atomic>
#include <cstddef>
#include <functional>
#include <string>

/// The size of a piece of a line, without its terminating zero.
inline constexpr std::size_t maxPieceBytes = 511;

/// Receives a piece of a matching line with a terminating zero. All pieces but a line's last have
/// maxPieceBytes, unless a zero byte in the file terminates one early. The line feed is part of the
/// last piece; CR LF arrives as LF.
using PieceSink = std::function<void(const char *piece)>;

/// Set it to true, from any thread, to stop a search. It stays true.
using SearchStop = std::atomic<bool>;

/// Searches the file at @p path for @p keyword, a findstr regular expression in UTF-8. Passes every
/// matching line to the sink once, in file order, before it returns. Once @p stop is set, the sink
/// receives nothing more. Returns false, with nothing passed to the sink, if the search could not
/// be started. Throws std::bad_alloc.
using LineSearch = std::function<bool(const std::string &keyword, const QString &path,
                                      const PieceSink &sink, const SearchStop &stop)>;

/// The search of this system: the findstr command on Windows, elsewhere a filter for the same
/// expressions. For a missing file findstr finds nothing, the filter returns false. A stopped
/// findstr is still waited for: it ends at its next output or at the end of the file. Any thread.
bool systemLineSearch(const std::string &keyword, const QString &path, const PieceSink &sink,
                      const SearchStop &stop = SearchStop(false));

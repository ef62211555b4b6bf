#pragma once

#include <QString>

#include <atomic>
#include <functional>
#include <string>

/// Takes one piece of a matching line: at most 511 bytes, ended by a zero byte. A line's line feed
/// belongs to its last piece; CR LF arrives as a line feed alone.
using PieceSink = std::function<void(const char *piece)>;

/// Set to true, from any thread, it ends a search before the file does. It stays true.
using SearchStop = std::atomic<bool>;

/// A search of the file at a path for a keyword, a findstr regular expression in UTF-8. Every
/// matching line goes to the sink once, in the file's order, piece by piece, before the search
/// returns. Once @p stop is set the sink sees nothing more. False: the search could not be started,
/// and the sink saw nothing.
using LineSearch = std::function<bool(const std::string &keyword, const QString &path,
                                      const PieceSink &sink, const SearchStop &stop)>;

/// The system's own search: the findstr command where there is one, elsewhere a filter of ours that
/// understands the same expressions. Any thread. A stopped findstr is still waited for: it ends
/// when it has something to say, or its file ends.
bool systemLineSearch(const std::string &keyword, const QString &path, const PieceSink &sink,
                      const SearchStop &stop = SearchStop(false));

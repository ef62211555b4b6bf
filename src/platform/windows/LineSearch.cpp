#include "LineSearch.h"

#include "FindstrCommand.h"
#include "windows/WindowlessConsole.h"

#include <array>
#include <cstdio>
#include <memory>

namespace {

struct PipeCloser
{
    void operator()(FILE *pipe) const { _pclose(pipe); }
};

} // namespace

bool systemLineSearch(const std::string &keyword, const QString &path, const PieceSink &sink,
                      const SearchStop &stop)
{
    static const bool quiet = takeWindowlessConsole(); // without it, a window opens for each search
    Q_UNUSED(quiet)
    const std::string command = findstrCommand(keyword, path.toLocal8Bit().toStdString());
    const std::unique_ptr<FILE, PipeCloser> pipe(_popen(command.c_str(), "r"));
    if (!pipe)
        return false;
    std::array<char, 512> piece;
    while (!stop && std::fgets(piece.data(), static_cast<int>(piece.size()), pipe.get()) != nullptr)
        sink(piece.data());
    return true;
}

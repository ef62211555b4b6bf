#include "LineSearch.h"

#include "FindstrCommand.h"
#include "PlatformLog.h"
#include "windows/WindowlessConsole.h"

#include <QDir>

#include <array>
#include <cstdio>
#include <memory>

#include <windows.h>

namespace {

struct PipeCloser
{
    void operator()(FILE *pipe) const { _pclose(pipe); }
};

/// The file's short name, which every code page can spell; empty if it has none.
QString shortName(const QString &path)
{
    const std::wstring native = QDir::toNativeSeparators(path).toStdWString();
    std::wstring name(native.size() + MAX_PATH, L'\0');
    name.resize(::GetShortPathNameW(native.c_str(), name.data(), static_cast<DWORD>(name.size())));
    return QString::fromStdWString(name);
}

bool isInCodePage(const QString &path)
{
    return QString::fromLocal8Bit(path.toLocal8Bit()) == path;
}

/// @p path in the code page of the command line.
QByteArray commandPath(const QString &path)
{
    if (isInCodePage(path))
        return path.toLocal8Bit();
    const QString name = shortName(path);
    if (!name.isEmpty() && isInCodePage(name))
        return name.toLocal8Bit();
    qCWarning(platformLog) << "findstr cannot be given this path:" << path;
    return path.toLocal8Bit();
}

bool keepSearchesWindowless()
{
    const bool isQuiet = takeWindowlessConsole();
    if (!isQuiet)
        qCWarning(platformLog) << "there is no windowless console: each search opens a window";
    return isQuiet;
}

} // namespace

bool systemLineSearch(const std::string &keyword, const QString &path, const PieceSink &sink,
                      const SearchStop &stop)
{
    static const bool isQuiet = keepSearchesWindowless();
    Q_UNUSED(isQuiet)
    const std::string command = findstrCommand(keyword, commandPath(path).toStdString());
    const std::unique_ptr<FILE, PipeCloser> pipe(_popen(command.c_str(), "r"));
    if (!pipe)
        return false;
    std::array<char, maxPieceBytes + 1> piece;
    while (!stop && std::fgets(piece.data(), static_cast<int>(piece.size()), pipe.get()) != nullptr)
        sink(piece.data());
    return true;
}

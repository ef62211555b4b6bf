#include "LogFile.h"

#include "LineBlockReader.h"
#include "SharedFile.h"
#include "ViewerLog.h"

#include <QFile>

#include <new>

namespace {

/// Passes lines to @p sink and counts them in @p number.
void passLines(QFile &file, const QString &path, int maxLines, const LogLineSink &sink, int &number)
{
    LineBlockReader blocks(file);
    for (std::string_view rest = blocks.next(); !rest.empty(); rest = blocks.next()) {
        std::size_t end = 0;
        for (; number < maxLines && (end = rest.find('\n')) != std::string_view::npos; ++number) {
            const std::string_view line = rest.substr(0, end);
            sink(line.substr(0, line.find('\0')), number);
            rest.remove_prefix(end + 1);
        }
        if (number == maxLines)
            break;
    }
    blocks.logProblems(path);
}

} // namespace

std::optional<int> readLogFile(const QString &path, int maxLines, const LogLineSink &sink)
{
    QFile file(path);
    if (!openShared(file))
        return std::nullopt;
    int number = 0;
    try {
        passLines(file, path, maxLines, sink, number);
    } catch (const std::bad_alloc &) {
        qCWarning(viewerLog) << "out of memory, left out from line" << number + 1 << "on:" << path;
    }
    return number;
}

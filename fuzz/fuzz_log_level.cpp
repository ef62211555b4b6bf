// Setting the level in a properties file. The first byte of an input is the level, the rest is the
// file: only level lines change, and line ends become the platform's.
#include "Fuzz.h"
#include "LogLevelFile.h"
#include "LogLevelRewrite.h"
#include "MemoryFile.h"
#include "PlainLevels.h"

#include <QList>

#include <optional>

namespace {

/// The level in the first root line of @p text, by a plain implementation.
std::optional<int> plainLevel(const QByteArray &text)
{
    for (const QByteArray &line : text.split('\n')) {
        if (!line.contains("log4cpp.rootCategory"))
            continue;
        if (line.contains("INFO"))
            return 0;
        if (line.contains("DEBUG"))
            return 1;
        if (line.contains("FATAL"))
            return 2;
        break;
    }
    return std::nullopt;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const int level = int(data[0] % 8) - 2;
    const QByteArray bytes(reinterpret_cast<const char *>(data + 1), int(size - 1));
    demand(LogLevelFile::levelNamedIn(bytes.toStdString()) == plainLevel(bytes),
           "the level that is read");

    MemoryFile file(bytes);
    const PlainLevels expected = withPlainLevels(bytes, level);
    const auto done =
        expected.bothReplaced ? LogLevelRewrite::Outcome::Done : LogLevelRewrite::Outcome::Failed;
    demand(LogLevelRewrite(file.path()).apply(level) == done, "done when both lines were there");
    demand(file.read() == expected.bytes, "the level lines are set and all else is as it was");

    const bool isLevel = level >= 0 && level <= 2;
    if (isLevel && expected.bothReplaced)
        demand(LogLevelFile::levelNamedIn(file.read().toStdString()) == level,
               "what is written is read again");
    // Of two CRs before a line feed, one belongs to the line until the other is removed.
    if (isLevel && !expected.bytes.contains("\r\n")) {
        demand(LogLevelRewrite(file.path()).apply(level) == done, "done again");
        demand(file.read() == expected.bytes, "a second rewriting changes nothing");
    }
    return 0;
}

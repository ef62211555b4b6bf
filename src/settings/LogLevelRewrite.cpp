#include "LogLevelRewrite.h"

#include "LogLevelFile.h"
#include "SettingsLog.h"

#include <QDebug>
#include <QFileInfo>

#include <array>
#include <new>
#include <utility>

LogLevelRewrite::LogLevelRewrite(const QString &filePath, PropertiesFile::Disk theDisk)
    : path(filePath)
    , disk(std::move(theDisk))
{
}

LogLevelRewrite::~LogLevelRewrite()
{
    // A deleted file is not recreated: somebody has removed it on purpose.
    if (!partialWrite || !QFileInfo(path).isFile())
        return;
    const std::optional<std::string> found = disk.read(path);
    const bool writtenByOthers = found && partialWrite->found && found != partialWrite->found;
    if (!writtenByOthers)
        putBack();
}

LogLevelRewrite::Outcome LogLevelRewrite::apply(int level)
{
    std::optional<std::string> found = read();
    return found ? rewrite(std::move(*found), level, std::nullopt) : Outcome::Unreadable;
}

LogLevelRewrite::Outcome LogLevelRewrite::applyIfSettled(int level)
{
    const Stamp seen = disk.stamp(path);
    std::optional<std::string> found = read();
    if (!found)
        return Outcome::Unreadable;
    const std::optional<Stamp> before = std::exchange(lastSeen, seen);
    return before == seen ? rewrite(std::move(*found), level, seen) : Outcome::Failed;
}

std::optional<std::string> LogLevelRewrite::read()
{
    std::optional<std::string> found = disk.read(path);
    if (!found)
        qDebug("open failed");
    else if (partialWrite && partialWrite->found && partialWrite->found != found)
        partialWrite.reset(); // another program has written the file
    return found;
}

LogLevelRewrite::Outcome LogLevelRewrite::rewrite(std::string found, int level,
                                                  const std::optional<Stamp> &settled)
try {
    if (partialWrite)
        partialWrite->found = found;
    const auto result = LogLevelFile::rewritten(partialWrite ? partialWrite->text : found, level);
    const bool complete = result.rootReplaced && result.categoryReplaced;
    if (!complete)
        report(Problem::LinesMissing);
    if (!PropertiesFile::isWritable(path)) {
        report(Problem::NotWritable);
        return Outcome::Failed;
    }
    if (!settled || result.bytes != found) {
        const bool touched = settled && settled != disk.stamp(path);
        if (touched || !write(found, result.bytes))
            return Outcome::Failed;
    }
    partialWrite.reset();
    return complete ? Outcome::Done : Outcome::Failed;
} catch (const std::bad_alloc &) {
    report(Problem::TooLarge);
    return Outcome::Unreadable;
}

bool LogLevelRewrite::write(std::string &found, std::string_view bytes)
{
    if (!partialWrite)
        partialWrite = PartialWrite{std::move(found), std::nullopt};
    if (disk.overwrite(path, bytes))
        return true;
    report(Problem::NotWritten);
    putBack();
    return false;
}

void LogLevelRewrite::putBack()
{
    if (disk.overwrite(path, partialWrite->text)) {
        partialWrite.reset();
        return;
    }
    report(Problem::NotRestored);
    partialWrite->found = disk.read(path);
}

void LogLevelRewrite::report(Problem problem)
{
    static constexpr std::array<const char *, 5> lines{
        "log level lines missing", "log config not writable", "log config not written",
        "log config not restored", "log config too large for memory"};
    lastProblem = problem;
    if (reported.test(size_t(problem)))
        return;
    reported.set(size_t(problem));
    qCWarning(settingsLog, "%s: %s", lines[size_t(problem)], qUtf8Printable(path));
}

#include "LogLevelRewrite.h"

#include "LogLevelFile.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <utility>

namespace {

// Whatever the rewriting adds, the result still fits into a byte array.
constexpr qint64 largestFile = 512LL * 1024 * 1024;

bool canBeWritten(const QString &path)
{
    return QFile(path).open(QIODevice::ReadWrite | QIODevice::ExistingOnly);
}

/// A file's bytes, or what kept us from reading them.
struct Contents
{
    std::optional<QByteArray> bytes;
    const char *problem = nullptr;
};

Contents contentsOf(const QString &path)
{
    QFile file(path);
    // A pipe would block at opening, and a device may never end.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {std::nullopt, "open failed"};
    if (file.size() > largestFile)
        return {std::nullopt, "log config file too large"};
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return {std::nullopt, "read failed"};
    return {std::move(bytes), nullptr};
}

} // namespace

std::optional<QByteArray> readPropertiesFile(const QString &path)
{
    Contents contents = contentsOf(path);
    if (contents.problem != nullptr)
        qDebug("%s", contents.problem);
    return std::move(contents.bytes);
}

bool overwriteFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered))
        return false;
    const bool written = file.write(bytes) == bytes.size() && file.resize(bytes.size());
    file.close();
    return written && file.error() == QFileDevice::NoError;
}

LogLevelRewrite::LogLevelRewrite(const QString &filePath, Overwrite disk)
    : path(filePath)
    , overwrite(std::move(disk))
{
}

LogLevelRewrite::~LogLevelRewrite()
{
    // A file that is gone was taken away by somebody, and is not made anew.
    if (!partiallyWritten || !QFileInfo(path).isFile())
        return;
    const std::optional<QByteArray> found = contentsOf(path).bytes;
    const bool writtenByOthers = found && partialContents && found != partialContents;
    if (!writtenByOthers)
        putBack();
}

LogLevelRewrite::Outcome LogLevelRewrite::apply(int level)
{
    if (!read())
        return Outcome::Unreadable;
    const auto result = LogLevelFile::rewritten(LogLevelFile::withLineFeeds(original), level);
    const bool stored = store(LogLevelFile::withPlatformLineEnds(result.text));
    const bool complete = result.rootReplaced && result.categoryReplaced;
    if (!complete)
        report(Problem::LinesMissing);
    return stored && complete ? Outcome::Done : Outcome::Failed;
}

bool LogLevelRewrite::read()
{
    const std::optional<QByteArray> found = readPropertiesFile(path);
    if (!found)
        return false;
    const bool writtenByOthers = partialContents && found != partialContents;
    if (!partiallyWritten || writtenByOthers) {
        original = *found;
        partiallyWritten = false;
        partialContents.reset();
    } else {
        partialContents = found;
    }
    return true;
}

bool LogLevelRewrite::store(const QByteArray &bytes)
{
    if (!canBeWritten(path)) {
        report(Problem::NotWritable);
        return false;
    }
    // Not written again in vain: a retry would wear the disk, and undo what another program writes
    // between our reading and writing.
    if (!partiallyWritten && bytes == original)
        return true;
    if (overwrite(path, bytes)) {
        partiallyWritten = false;
        partialContents.reset();
        return true;
    }
    report(Problem::NotWritten);
    putBack();
    return false;
}

void LogLevelRewrite::putBack()
{
    partiallyWritten = !overwrite(path, original);
    partialContents.reset();
    if (!partiallyWritten)
        return;
    report(Problem::NotRestored);
    partialContents = contentsOf(path).bytes;
}

void LogLevelRewrite::report(Problem problem)
{
    static constexpr std::array<const char *, 4> lines{
        "log config not writable", "log config not written", "log config not restored",
        "log level lines missing"};
    if (reported.test(size_t(problem)))
        return;
    reported.set(size_t(problem));
    qDebug("%s", lines[size_t(problem)]);
}

// Setting the level, by clicks and by retries, on a disk that can fail at any time, while other
// programs write the file too: the last writer's text survives completely.
#include "Fuzz.h"
#include "LogLevelRewrite.h"
#include "MemoryFile.h"
#include "PlainLevels.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <string>

namespace {

QByteArray someText(FuzzedDataProvider &input)
{
    static const char *const pieces[] = {"log4cpp.rootCategory = WARN\n",
                                         "log4cpp.category.qzsdk = WARN\r\n", "x\n", "\n", "abc"};
    QByteArray text;
    for (int left = input.ConsumeIntegralInRange(0, 5); left > 0; --left)
        text += input.PickValueInArray(pieces);
    return text;
}

/// A disk that stores as much of a write as the input says.
class Disk
{
public:
    Disk(MemoryFile &onlyFile, FuzzedDataProvider &provider)
        : file(onlyFile)
        , input(provider)
    {
    }

    bool overwrite(const QString &path, std::string_view bytes)
    {
        demand(path == file.path(), "only the properties file is written");
        ++version;
        lastFailed = !repaired && input.ConsumeBool();
        if (!lastFailed)
            return PropertiesFile::overwrite(path, bytes);
        const int taken = input.ConsumeIntegralInRange(0, int(bytes.size()));
        const QByteArray before = file.read();
        const bool truncated = input.ConsumeBool();
        file.write(QByteArray(bytes.data(), taken) +
                   (truncated ? QByteArray() : before.mid(taken)));
        return false;
    }

    bool repaired = false;
    bool lastFailed = false; ///< the file may be partially written
    int version = 0;         ///< incremented by each write

private:
    MemoryFile &file;
    FuzzedDataProvider &input;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider input(data, size);
    QByteArray whole = someText(input);
    MemoryFile file(whole);
    Disk disk(file, input);
    {
        LogLevelRewrite rewrite(file.path(), {PropertiesFile::read,
                                              [&disk](const QString &path, std::string_view bytes) {
                                                  return disk.overwrite(path, bytes);
                                              },
                                              [&disk](const QString & /*path*/) {
                                                  return PropertiesFile::Stamp(disk.version,
                                                                               QDateTime());
                                              }});
        int settledVersion = -1;
        for (int left = input.ConsumeIntegralInRange(1, 8); left > 0; --left) {
            if (input.ConsumeBool()) {
                const QByteArray text = someText(input);
                // Writing identical contents cannot be detected.
                if (text != file.read()) {
                    file.write(text);
                    whole = text;
                    disk.lastFailed = false;
                    ++disk.version;
                }
            }
            const int level = input.ConsumeIntegralInRange(-1, 3);
            const PlainLevels expected = withPlainLevels(whole, level);
            const bool ifSettled = input.ConsumeBool();
            const int before = disk.version;
            const auto outcome = ifSettled ? rewrite.applyIfSettled(level) : rewrite.apply(level);
            const bool settled = ifSettled && before == settledVersion;
            demand(!ifSettled || settled || disk.version == before,
                   "what was written since the last round is left alone");
            if (ifSettled)
                settledVersion = before;
            const QByteArray now = file.read();
            demand(outcome != LogLevelRewrite::Outcome::Unreadable, "the file can be read");
            demand(outcome != LogLevelRewrite::Outcome::Done ||
                       (now == expected.bytes && expected.bothReplaced),
                   "done means that both lines are set");
            // A failed write may have stored everything, and then there is nothing left to write.
            if (settled && disk.version == before && now == expected.bytes)
                disk.lastFailed = false;
            if (disk.lastFailed)
                continue;
            demand(now == whole || now == expected.bytes,
                   "the file is whole unless the disk fails");
            whole = now;
        }
        disk.repaired = true;
    }
    demand(file.read() == whole, "the text is put back as soon as the disk works");
    return 0;
}

// Splitting a log file into lines: as a file, and from a device that delivers small chunks and may
// fail.
#include "Fuzz.h"
#include "LineBlockReader.h"
#include "LogFile.h"
#include "MemoryFile.h"

#include <QIODevice>

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace {

/// Delivers a text in chunks of given sizes, the last one unlimited, and may fail at the end.
class HaltingDevice : public QIODevice
{
public:
    HaltingDevice(std::string_view text, std::vector<std::uint32_t> pieceSizes, bool breaks)
        : rest(text)
        , sizes(std::move(pieceSizes))
        , failing(breaks)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    [[nodiscard]] bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        if (rest.empty())
            return failing ? -1 : 0;
        std::size_t size = std::min(rest.size(), std::size_t(maxSize));
        if (at < sizes.size())
            size = std::min(size, std::size_t(sizes[at++]) + 1);
        std::copy_n(rest.data(), size, data);
        rest.remove_prefix(size);
        return qint64(size);
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    std::string_view rest;
    std::vector<std::uint32_t> sizes;
    std::size_t at = 0;
    bool failing;
};

/// Replaces each 1 by many x, so that short inputs make lines longer than a block.
std::string inflated(const std::string &text)
{
    std::string result;
    int left = 5;
    for (const char c : text) {
        if (c == '\1' && left-- > 0)
            result.append(LineBlockReader::blockBytes / 4, 'x');
        else
            result += c;
    }
    return result;
}

std::string withLineFeeds(const std::string &text)
{
    std::string result;
    std::size_t from = 0;
    for (std::size_t end = 0; (end = text.find("\r\n", from)) != std::string::npos; from = end + 1)
        result.append(text, from, end - from);
    return result.append(text, from);
}

/// A plain implementation of the rule.
std::vector<std::string> expectedLines(const std::string &text, int most)
{
    std::istringstream in(withLineFeeds(text));
    std::vector<std::string> lines;
    std::string line;
    while (int(lines.size()) < most && std::getline(in, line) && !in.eof())
        lines.push_back(line.substr(0, line.find('\0')));
    return lines;
}

void tryFile(const std::string &text, int most)
{
    const MemoryFile file(QByteArray::fromStdString(text));
    std::vector<std::string> lines;
    const auto count = readLogFile(file.path(), most, [&lines](std::string_view line, int number) {
        demand(number == int(lines.size()), "lines are numbered from 0");
        lines.emplace_back(line);
    });
    demand(lines == expectedLines(text, most), "the lines that a stream reads");
    demand(count == int(lines.size()), "the number of lines");
}

/// @p text as read with lines truncated to @p longest bytes.
std::string cutLines(const std::string &text, std::size_t longest, bool &cut)
{
    std::string result;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find('\n', from), text.size());
        cut = cut || end - from > longest;
        result.append(text, from, std::min(end - from, longest));
        if (end < text.size())
            result += '\n';
        from = end + 1;
    }
    return withLineFeeds(result);
}

void tryBlocks(const std::string &text, std::vector<std::uint32_t> sizes, bool breaks)
{
    HaltingDevice device(text, std::move(sizes), breaks);
    LineBlockReader blocks(device, LineBlockReader::blockBytes);
    std::string result;
    bool ended = false;
    for (std::string_view block = blocks.next(); !block.empty(); block = blocks.next()) {
        demand(!ended, "only the last block may lack its line feed");
        ended = block.back() != '\n';
        result += block;
    }
    bool cut = false;
    demand(result == cutLines(text, LineBlockReader::blockBytes, cut),
           "the text, block after block");
    demand(blocks.hasTruncatedLines() == cut, "a truncated line is reported");
    demand(blocks.failed() == breaks, "a failed device is reported");
}

void tryLineEnds(const std::string &text)
{
    std::string changed = text;
    changed.resize(unifyLineEnds(changed.data(), changed.size()));
    demand(changed == withLineFeeds(text), "CR LF becomes LF, and nothing else changes");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider input(data, size);
    const int most = input.ConsumeIntegralInRange(0, 40);
    const bool breaks = input.ConsumeBool();
    std::vector<std::uint32_t> sizes;
    for (int left = input.ConsumeIntegralInRange(0, 12); left > 0; --left)
        sizes.push_back(input.ConsumeBool() ? input.ConsumeIntegral<std::uint8_t>()
                                            : input.ConsumeIntegralInRange(0U, 300'000U));
    const std::string text = inflated(input.ConsumeRemainingBytesAsString());
    tryLineEnds(text);
    tryFile(text, most);
    tryBlocks(text, std::move(sizes), breaks);
    return 0;
}

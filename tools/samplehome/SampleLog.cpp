#include "SampleLog.h"

#include "SampleRandom.h"

#include <iterator>

namespace {

struct Message
{
    int share; // relative frequency
    const char *level;
    const char *source;
    const char *text; // each '#' becomes a digit
};

const Message messages[] = {
    {90, "DEBUG", "qzsdk.stream", "frame ##### complete, # packets, #### us"},
    {60, "DEBUG", "qzsdk.buffer", "buffer ## queued, ## in flight"},
    {40, "DEBUG", "qzsdk.transport", "heartbeat answered after # ms"},
    {25, "DEBUG", "qzsdk.features", "read ExposureTime: ##### us"},
    {30, "INFO", "qzsdk.stream", "acquisition runs at ##.# frames/s, #.## Gbit/s"},
    {25, "INFO", "qzsdk.device", "camera QZ-####-## opened, firmware 2.#.#"},
    {20, "INFO", "qzsdk.features", "Gain set to #.# dB"},
    {15, "INFO", "qzsdk.event", "exposure end of frame #####"},
    {8, "INFO", "qzsdk.device",
     "user name of the camera: \xe4\xba\xa7\xe7\xba\xbf#\xe5\x8f\xb7"
     "\xe7\x9b\xb8\xe6\x9c\xba"},
    {14, "WARN", "qzsdk.transport", "## packets resent for frame #####"},
    {8, "WARN", "qzsdk.buffer", "no free buffer, frame ##### dropped"},
    {5, "WARN", "qzsdk.device", "temperature of the sensor board: 7#.# degrees"},
    {6, "ERROR", "qzsdk.stream", "timeout of #### ms while waiting for frame #####"},
    {4, "ERROR", "qzsdk.transport", "link # lost, code 0x800###"},
    {2, "ERROR", "qzsdk.features", "cannot write Width: value #### is out of range [16, 4096]"},
    {1, "FATAL", "qzsdk.device", "camera QZ-####-## does not answer, giving up after # attempts"},
};

const char *const frames[] = {
    "qzsdk::StreamChannel::waitForFrame(unsigned int)",
    "qzsdk::StreamChannel::run()",
    "qzsdk::LinkLayer::receive(qzsdk::Packet &)",
    "qzsdk::Device::execute(const qzsdk::Command &)",
    "qzsdk::WorkerThread::main()",
};

QByteArray withDigits(const char *text, SampleRandom &random)
{
    QByteArray filled(text);
    for (char &c : filled) {
        if (c == '#')
            c = char('1' + random.below(9));
    }
    return filled;
}

const Message &anyMessage(SampleRandom &random)
{
    int sum = 0;
    for (const Message &message : messages)
        sum += message.share;
    int left = random.below(sum);
    const Message *chosen = std::begin(messages);
    for (; left >= chosen->share; ++chosen)
        left -= chosen->share;
    return *chosen;
}

QByteArray stackFrame(int number, SampleRandom &random)
{
    const char *function = frames[random.below(int(std::size(frames)))];
    return "    #" + QByteArray::number(number) + "  0x00007f" + withDigits("####a#c#  ", random) +
           function;
}

/// Collects lines up to the log's number of lines.
class LogText
{
public:
    explicit LogText(int most)
        : limit(most)
    {
    }

    [[nodiscard]] bool full() const { return count >= limit; }
    [[nodiscard]] int lines() const { return count; }
    void add(const QByteArray &line)
    {
        if (full())
            return;
        text += line;
        text += '\n';
        ++count;
    }

    QByteArray text;

private:
    int limit;
    int count = 0;
};

} // namespace

QByteArray sampleLog(const QByteArray &process, const QDateTime &end, int lines,
                     SampleRandom &random)
{
    const QString format = QStringLiteral("yyyy-MM-dd HH:mm:ss,zzz");
    const QDateTime begin = end.addMSecs(-sampleLogSpan);
    const qint64 step = sampleLogSpan / lines;
    const int threads = random.between(1000, 9000);

    LogText log(lines);
    log.add("==== " + process + ", log of process " + QByteArray::number(threads) + " ====");
    while (!log.full()) {
        const QDateTime time =
            begin.addMSecs(log.lines() * step + random.below(int(qMax(step, qint64(1)))));
        const Message &message = anyMessage(random);
        log.add(time.toString(format).toLatin1() + ' ' + message.level + " [" +
                QByteArray::number(threads + random.between(1, 6)) + "] [" + message.source + "] " +
                withDigits(message.text, random));
        if (message.level == QByteArray("ERROR") && random.oneIn(2)) {
            for (int i = 0, depth = random.between(3, 6); i < depth; ++i)
                log.add(stackFrame(i, random));
        } else if (random.oneIn(150)) {
            log.add("link statistics:");
            for (int lane = 0; lane < 4; ++lane)
                log.add(withDigits("  lane ", random) + QByteArray::number(lane) +
                        withDigits(": ##### packets, # resent, 0 lost", random));
        }
    }
    return log.text;
}

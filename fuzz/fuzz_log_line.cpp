// The line splitter, compared with a stream that is read word by word.
#include "Fuzz.h"
#include "LogLine.h"
#include "StreamedLine.h"

namespace {

bool liesIn(std::string_view line, std::string_view field)
{
    return field.empty() || (field.data() >= line.data() &&
                             field.data() + field.size() <= line.data() + line.size());
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string_view line(reinterpret_cast<const char *>(data), size);
    const LogLine fields = splitLogLine(line);
    const StreamedLine expected = readAsStream(std::string(line));
    demand(fields.structured == expected.structured, "structured as the stream says");
    demand(fields.timestamp == expected.timestamp, "the stream's timestamp");
    demand(fields.level == expected.level, "the stream's level");
    demand(fields.source == expected.source, "the stream's source");
    demand(fields.message == expected.message, "the stream's message");
    for (const std::string_view field :
         {fields.timestamp, fields.level, fields.source, fields.message})
        demand(liesIn(line, field), "fields are parts of their line");
    return 0;
}

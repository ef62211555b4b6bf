#include "StreamedLine.h"

#include <sstream>

StreamedLine readAsStream(const std::string &line)
{
    std::istringstream in(line);
    std::string date;
    std::string time;
    StreamedLine fields;
    std::getline(in, date, ' ');
    std::getline(in, time, ' ');
    std::getline(in, fields.level, ' ');
    const std::string &level = fields.level;
    fields.structured = !date.empty() && !time.empty() &&
                        (level == "INFO" || level == "DEBUG" || level == "WARN" ||
                         level == "ERROR" || level == "FATAL");
    if (!fields.structured)
        return {};
    fields.timestamp = date + ' ' + time;
    char bracket = 0;
    std::string discarded;
    in >> bracket;
    std::getline(in, discarded, ']');
    in >> bracket;
    std::getline(in, fields.source, ']');
    std::getline(in, fields.message, '\n');
    return fields;
}

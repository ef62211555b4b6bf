#include "FindstrCommand.h"

#include <algorithm>

std::string findstrCommand(std::string_view keyword, std::string_view path)
{
    std::string nativePath(path);
    std::replace(nativePath.begin(), nativePath.end(), '/', '\\');
    std::string command("findstr /r \"");
    command.append(keyword).append("\" ").append(nativePath).append(" ");
    return command;
}

#pragma once

#include <QByteArray>

// Properties files of the SDK's log that hold nothing but their level.

inline const QByteArray infoFile = "log4cpp.rootCategory = INFO\n"
                                   "log4cpp.category.qzsdk = INFO, a_qzsdk\n";
inline const QByteArray debugFile = "log4cpp.rootCategory = DEBUG\n"
                                    "log4cpp.category.qzsdk = DEBUG, a_qzsdk\n";
inline const QByteArray fatalFile = "log4cpp.rootCategory = FATAL\n"
                                    "log4cpp.category.qzsdk = FATAL, a_qzsdk\n";

/// @p bytes with plain line feeds: the program ends lines as the platform does.
[[nodiscard]] inline QByteArray unixLines(QByteArray bytes)
{
    return bytes.replace("\r\n", "\n");
}

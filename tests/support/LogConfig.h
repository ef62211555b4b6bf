#pragma once

#include <QByteArray>

// Properties files that contain only the level lines.

inline const QByteArray infoFile = "log4cpp.rootCategory = INFO\n"
                                   "log4cpp.category.qzsdk = INFO, a_qzsdk\n";
inline const QByteArray debugFile = "log4cpp.rootCategory = DEBUG\n"
                                    "log4cpp.category.qzsdk = DEBUG, a_qzsdk\n";
inline const QByteArray fatalFile = "log4cpp.rootCategory = FATAL\n"
                                    "log4cpp.category.qzsdk = FATAL, a_qzsdk\n";

/// @p bytes with LF line ends; the program writes the platform's.
[[nodiscard]] inline QByteArray unixLines(QByteArray bytes)
{
    return bytes.replace("\r\n", "\n");
}

#pragma once

#include <QLoggingCategory>

/// Problems reading a file that is loaded or searched. Off by default;
/// QT_LOGGING_RULES="vantrel.*=true" switches it on.
Q_DECLARE_LOGGING_CATEGORY(findstrLog)

#pragma once

#include <QLoggingCategory>

/// Problems with the properties file beyond the fixed texts of the debug output. Off by default;
/// QT_LOGGING_RULES="vantrel.*=true" switches it on.
Q_DECLARE_LOGGING_CATEGORY(settingsLog)

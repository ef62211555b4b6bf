#pragma once

#include <QLoggingCategory>

/// What goes wrong with the properties file, beyond the fixed lines of the debug output. Off unless
/// QT_LOGGING_RULES switches it on.
Q_DECLARE_LOGGING_CATEGORY(settingsLog)

#pragma once

#include <QLoggingCategory>

/// Why lines of a log are missing. Off by default; QT_LOGGING_RULES="vantrel.*=true" switches it
/// on.
Q_DECLARE_LOGGING_CATEGORY(viewerLog)

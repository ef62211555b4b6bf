#pragma once

#include <QLoggingCategory>

/// Why something is missing from a zip. Off by default; QT_LOGGING_RULES="vantrel.*=true" switches
/// it on.
Q_DECLARE_LOGGING_CATEGORY(engineLog)

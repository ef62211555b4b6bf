#pragma once

#include <QLoggingCategory>

/// System queries that failed, and why. Off by default; QT_LOGGING_RULES="vantrel.*=true" switches
/// it on.
Q_DECLARE_LOGGING_CATEGORY(platformLog)

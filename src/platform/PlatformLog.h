#pragma once

#include <QLoggingCategory>

/// What the system could not answer, and why. Off by default; QT_LOGGING_RULES="vantrel.*=true"
/// switches it on.
Q_DECLARE_LOGGING_CATEGORY(platformLog)

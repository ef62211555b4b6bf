#pragma once

#include <QLoggingCategory>

/// What the engine has to tell beyond the fixed texts of the debug output: why something is missing
/// from a zip. Off by default; QT_LOGGING_RULES="vantrel.*=true" switches it on.
Q_DECLARE_LOGGING_CATEGORY(engineLog)

#pragma once

#include <QLoggingCategory>

/// What the viewer has to tell beyond the fixed texts of the debug output: why lines of a log are
/// missing. Off by default; QT_LOGGING_RULES="vantrel.*=true" switches it on.
Q_DECLARE_LOGGING_CATEGORY(viewerLog)

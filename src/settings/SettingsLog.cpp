#include "SettingsLog.h"

Q_LOGGING_CATEGORY(settingsLog, "vantrel.settings", QtFatalMsg)

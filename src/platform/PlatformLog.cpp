#include "PlatformLog.h"

Q_LOGGING_CATEGORY(platformLog, "vantrel.platform", QtFatalMsg)

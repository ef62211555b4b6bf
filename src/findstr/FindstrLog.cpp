#include "FindstrLog.h"

Q_LOGGING_CATEGORY(findstrLog, "vantrel.findstr", QtFatalMsg)

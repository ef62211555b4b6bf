#include "EngineLog.h"

Q_LOGGING_CATEGORY(engineLog, "vantrel.engine", QtFatalMsg)

#include "ViewerLog.h"

Q_LOGGING_CATEGORY(viewerLog, "vantrel.viewer", QtFatalMsg)

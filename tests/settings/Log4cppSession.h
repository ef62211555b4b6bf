#pragma once

#include <string>

/// What log4cpp makes of a properties file: one message of each level, logged under the SDK's
/// category and under another one. The file's appenders are "a_root" and "a_qzsdk", which are put
/// away again afterwards. An error text, empty when all went well.
std::string logEveryLevel(const std::string &propertiesFile);

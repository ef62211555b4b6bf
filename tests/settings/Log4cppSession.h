#pragma once

#include <string>

/// Configures log4cpp from a properties file and logs one message of each level under the SDK's
/// category and under another one. Removes the file's appenders "a_root" and "a_qzsdk" afterwards.
/// Returns an error message, empty on success.
std::string logEveryLevel(const std::string &propertiesFile);

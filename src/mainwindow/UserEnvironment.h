#pragma once

#include "CameraClient.h"

#include <QString>

/// The user's machine as the main window sees it at startup; tests supply their own.
struct UserEnvironment
{
    QString homeFolder; ///< contains the SDK folder and the client's language file
    CameraClient client;
};

/// The environment of this user on this machine.
[[nodiscard]] UserEnvironment systemEnvironment();

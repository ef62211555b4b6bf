#pragma once

#include "CameraClient.h"

#include <QString>

/// What the main window takes from the user's machine at start; a test hands in its own.
struct UserEnvironment
{
    QString homeFolder; ///< root of the SDK folder and of the client's language file
    CameraClient client;
};

/// This machine, this user.
[[nodiscard]] UserEnvironment systemEnvironment();

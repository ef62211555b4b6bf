#pragma once

#include <QString>

/// How the camera client made itself known to the system.
struct CameraClient
{
    QString iconPath;       ///< icon of its file class, "…/Client.exe,0"; empty: not installed
    QString pathSeparators; ///< characters that separate folders in iconPath
};

/// The camera client's registration. Read anew at each call; any thread.
[[nodiscard]] CameraClient registeredCameraClient();

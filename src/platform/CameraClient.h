#pragma once

#include <QString>

/// The camera client's registration in the system.
struct CameraClient
{
    QString iconPath;       ///< icon of its file class, "…/Client.exe,0"; empty if not installed
    QString pathSeparators; ///< characters that separate folders in iconPath
};

/// Reads the camera client's registration. Any thread.
[[nodiscard]] CameraClient registeredCameraClient();

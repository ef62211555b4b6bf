#pragma once

#include "UserEnvironment.h"

enum class DisplayLanguage { English, Chinese };

/// The base name of the client's executable, from the path of its registered icon:
/// "QZviewer" from "D:\Dir\QZviewer.exe,0". Empty when there is none to be found in the path or
/// it is longer than a path may be (259 bytes of UTF-8).
[[nodiscard]] QString clientNameFromIcon(const CameraClient &client);

/// The language that the camera client uses, which the tool shares: English without a client, else
/// what the client's "language.ini" in the user's folder says.
[[nodiscard]] DisplayLanguage chooseLanguage(const UserEnvironment &environment);

#pragma once

#include "UserEnvironment.h"

enum class DisplayLanguage { English, Chinese };

/// The base name of the client's executable, taken from its icon path: "QZviewer" for
/// "D:\Dir\QZviewer.exe,0". Empty if the path has no separator, no ".exe" after the last one, or a
/// name of more than 259 UTF-8 bytes.
[[nodiscard]] QString clientNameFromIcon(const CameraClient &client);

/// The camera client's language, which the tool shares: English without a client, otherwise as the
/// client's "language.ini" in the user's home folder says.
[[nodiscard]] DisplayLanguage chooseLanguage(const UserEnvironment &environment);

#pragma once

#include "UserEnvironment.h"

enum class DisplayLanguage { English, Chinese };

/// The base name of the client's executable, taken from its icon path: "QZviewer" for
/// "D:\Dir\QZviewer.exe,0". Empty if the path has no separator, no ".exe" after the last one, or a
/// name of more than 259 UTF-8 bytes.
[[nodiscard]] QString clientNameFromIcon(const CameraClient &client);

/// The camera client's language, which the tool shares: English if clientNameFromIcon() is empty or
/// the client's "language.ini" in the user's home folder has lang=1; otherwise, even without this
/// file, Chinese.
[[nodiscard]] DisplayLanguage chooseLanguage(const UserEnvironment &environment);

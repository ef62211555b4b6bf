#pragma once

#include <QLatin1String>
#include <QString>

class QWidget;

/// The style sheets and pictures that make the program's look. They lie below "Skins" in the
/// working directory or, if it has no skin, in the fallback folder. The two are never mixed. GUI
/// thread only.
namespace Skin {

inline const QLatin1String styleSheet("Skins/Default/Vantrel/style.qss");
inline const QLatin1String chineseFonts("Skins/Default/Vantrel/style_chn_font.qss");
inline const QLatin1String englishFonts("Skins/Default/Vantrel/style_eng_font.qss");
inline const QLatin1String busyAnimation("./Skins/Default/Vantrel/Icon_Common_Processing.gif");

/// Sets the folder whose "Skins" is used if the working directory has none: the executable's.
/// Without a call there is no such folder.
void setFallbackFolder(const QString &path);

/// The path by which Qt opens @p file, one of those above. It is @p file itself unless the skin
/// lies in the fallback folder.
[[nodiscard]] QString path(QLatin1String file);

/// Gives @p widget the main style sheet. Without that file the widget keeps what it has.
void applyStyleSheet(QWidget &widget);

/// Gives @p widget the main style sheet with @p fontSheet directly behind it, but only when both
/// files can be read.
void applyStyleSheet(QWidget &widget, QLatin1String fontSheet);

/// Lets the pictures in the style sheet that @p widget has from its form be found in the fallback
/// folder, if the skin lies there. Otherwise the sheet stays as it is.
void findPictures(QWidget &widget);

} // namespace Skin

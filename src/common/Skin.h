#pragma once

#include <QLatin1String>

class QWidget;

/// The skin's files, relative to the working directory: the launcher starts the program in the
/// folder that holds "Skins".
namespace Skin {

inline const QLatin1String styleSheet("Skins/Default/Vantrel/style.qss");
inline const QLatin1String chineseFonts("Skins/Default/Vantrel/style_chn_font.qss");
inline const QLatin1String englishFonts("Skins/Default/Vantrel/style_eng_font.qss");
inline const QLatin1String busyAnimation("./Skins/Default/Vantrel/Icon_Common_Processing.gif");

/// Gives @p widget the main style sheet. Without that file the widget keeps what it has.
void applyStyleSheet(QWidget &widget);

/// Gives @p widget the main style sheet with @p fontSheet directly behind it, but only when both
/// files can be read.
void applyStyleSheet(QWidget &widget, QLatin1String fontSheet);

} // namespace Skin

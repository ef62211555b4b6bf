#pragma once

#include <QLatin1String>
#include <QString>

class QWidget;

/// The program's style sheets and pictures, in the folder "Skins" of the working directory or, if
/// that has no skin, of the fallback folder. The two are never mixed. GUI thread only.
namespace Skin {

inline const QLatin1String styleSheet("Skins/Default/Vantrel/style.qss");
inline const QLatin1String chineseFonts("Skins/Default/Vantrel/style_chn_font.qss");
inline const QLatin1String englishFonts("Skins/Default/Vantrel/style_eng_font.qss");
inline const QLatin1String busyAnimation("./Skins/Default/Vantrel/Icon_Common_Processing.gif");

/// Sets the fallback folder, that of the executable. Without a call there is none.
void setFallbackFolder(const QString &path);

/// The path to open @p file, one of those above: @p file itself, unless the skin is in the fallback
/// folder.
[[nodiscard]] QString path(QLatin1String file);

/// Sets the main style sheet on @p widget. If it is missing, the widget keeps its sheet.
void applyStyleSheet(QWidget &widget);

/// Sets the main style sheet followed by @p fontSheet on @p widget, if both can be read.
void applyStyleSheet(QWidget &widget, QLatin1String fontSheet);

/// Adjusts picture paths in the style sheet that @p widget has from its form, if the skin is in the
/// fallback folder.
void findPictures(QWidget &widget);

} // namespace Skin

#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// A parsed style sheet: properties and values by selector. White space is normalised, comments are
/// dropped, and rules for several selectors are added to each.
using StyleSheetRules = QMap<QString, QMap<QString, QString>>;

[[nodiscard]] StyleSheetRules styleSheetRules(const QString &sheet);

/// The files named in url(...), without quotes.
[[nodiscard]] QStringList styleSheetUrls(const QString &sheet);

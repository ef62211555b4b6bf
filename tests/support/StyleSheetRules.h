#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// A style sheet taken apart for comparison: properties and values by selector. Blank space counts
/// once, comments do not count; what is given for several selectors at once belongs to each.
using StyleSheetRules = QMap<QString, QMap<QString, QString>>;

[[nodiscard]] StyleSheetRules styleSheetRules(const QString &sheet);

/// The files that the sheet names in url(...), as they stand there without quotes.
[[nodiscard]] QStringList styleSheetUrls(const QString &sheet);

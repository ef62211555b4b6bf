#include "LogItemDelegate.h"

#include "ShortenedText.h"

namespace {
constexpr int cellCharacters = 4096; // more than fit in the widest window
}

QString LogItemDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    QString text = shortened(value.toString(), cellCharacters);
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1); // otherwise drawn as an empty second line
    return QStyledItemDelegate::displayText(text, locale);
}

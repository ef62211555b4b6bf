#include "LogItemDelegate.h"

namespace {

constexpr int cellCharacters = 4096; // more than fit in the widest window

QString visiblePart(QString text)
{
    if (text.size() > cellCharacters) {
        const bool splits = text.at(cellCharacters - 1).isHighSurrogate();
        text.truncate(splits ? cellCharacters - 1 : cellCharacters);
        text.append(QChar(0x2026)); // an ellipsis
    }
    return text;
}

} // namespace

QString LogItemDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    QString text = visiblePart(value.toString());
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1); // otherwise drawn as an empty second line
    return QStyledItemDelegate::displayText(text, locale);
}

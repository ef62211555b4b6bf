#include "LogItemDelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

namespace {

constexpr int cellCharacters = 4096; // more than the widest window has room for
constexpr int tipCharacters = 1500;  // as much as a small screen has room for

QString visiblePart(QString text, int longest)
{
    if (text.size() > longest) {
        const bool halves = text.at(longest - 1).isHighSurrogate();
        text.truncate(halves ? longest - 1 : longest);
        text.append(QChar(0x2026)); // an ellipsis
    }
    return text;
}

} // namespace

QString LogItemDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    QString text = visiblePart(value.toString(), cellCharacters);
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1); // would be drawn as an empty second line
    return QStyledItemDelegate::displayText(text, locale);
}

bool LogItemDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                                const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QString line = visiblePart(index.data(Qt::ToolTipRole).toString(), tipCharacters);
    const QString tip = QStringLiteral("<p style='white-space:pre-wrap'>%1</p>");
    QToolTip::showText(event->globalPos(),
                       line.isEmpty() ? QString() : tip.arg(line.toHtmlEscaped()), view);
    return true;
}

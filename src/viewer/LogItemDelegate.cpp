#include "LogItemDelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

namespace {

constexpr int visibleCharacters = 4096; // more than the widest window has room for

QString visiblePart(QString text)
{
    if (text.size() > visibleCharacters) {
        const bool halves = text.at(visibleCharacters - 1).isHighSurrogate();
        text.truncate(halves ? visibleCharacters - 1 : visibleCharacters);
        text.append(QChar(0x2026)); // an ellipsis
    }
    return text;
}

} // namespace

QString LogItemDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    QString text = visiblePart(value.toString());
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1); // would be drawn as an empty second line
    return QStyledItemDelegate::displayText(text, locale);
}

bool LogItemDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                                const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QString line = visiblePart(index.data(Qt::ToolTipRole).toString());
    const QString tip = QStringLiteral("<p style='white-space:pre-wrap'>%1</p>");
    QToolTip::showText(event->globalPos(),
                       line.isEmpty() ? QString() : tip.arg(line.toHtmlEscaped()), view);
    return true;
}

#include "PlainToolTip.h"

#include "ShortenedText.h"

#include <QAbstractItemView>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QScreen>
#include <QTextLayout>
#include <QToolTip>

namespace {

constexpr int longestText = 1500; // characters
constexpr int longestLine = 80;   // widths of the letter x

/// @p text, broken into lines for a tip that fits in @p room.
QString brokenIntoLines(QString text, const QSize &room, const QFont &font)
{
    const int longest = longestLine * QFontMetrics(font).horizontalAdvance(QLatin1Char('x'));
    text.replace(QLatin1Char('\n'), QChar::LineSeparator);
    text.replace(QChar::ParagraphSeparator, QChar::LineSeparator);
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);

    QStringList lines;
    qreal height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLeadingIncluded(true);
        line.setLineWidth(qMin(room.width(), longest));
        height += line.height();
        if (height > room.height()) {
            lines += QString(QChar(0x2026)); // an ellipsis
            break;
        }
        lines += text.mid(line.textStart(), line.textLength()).remove(QChar::LineSeparator);
    }
    layout.endLayout();
    return lines.join(QLatin1Char('\n'));
}

/// @p text as markup for a tip that fits in @p room.
QString markup(QString text, const QSize &room)
{
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1); // otherwise an empty last line
    if (text.isEmpty())
        return {};
    // Lines are broken here because QLabel breaks rich text into a narrow column, however short,
    // and plain text not at all.
    return QStringLiteral("<div style='white-space:pre'>%1</div>")
        .arg(brokenIntoLines(shortened(text, longestText), room, QToolTip::font()).toHtmlEscaped());
}

/// Shows the tool tips of a widget, or of the items of a view.
class Filter : public QObject
{
public:
    Filter(QWidget *watched, QAbstractItemView *itemsOf)
        : QObject(watched)
        , view(itemsOf)
    {
        watched->installEventFilter(this);
    }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() != QEvent::ToolTip)
            return QObject::eventFilter(object, event);
        const auto *help = static_cast<QHelpEvent *>(event);
        auto *widget = static_cast<QWidget *>(object);
        const QModelIndex index = view != nullptr ? view->indexAt(help->pos()) : QModelIndex();
        const QString text =
            view != nullptr ? index.data(Qt::ToolTipRole).toString() : widget->toolTip();
        PlainToolTip::show(help->globalPos(), text, widget,
                           index.isValid() ? view->visualRect(index) : QRect());
        event->setAccepted(!text.isEmpty()); // otherwise a parent's tip is shown
        return true;
    }

private:
    QAbstractItemView *view; ///< null: the widget's tool tip
};

} // namespace

void PlainToolTip::installOn(QWidget &widget)
{
    new Filter(&widget, nullptr);
}

void PlainToolTip::installOnItemsOf(QAbstractItemView &view)
{
    new Filter(view.viewport(), &view);
}

void PlainToolTip::show(const QPoint &globalPos, const QString &text, QWidget *owner,
                        const QRect &area)
{
    const QScreen *screen = QGuiApplication::screenAt(globalPos);
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    // A third of the screen is left for the pointer's distance and the frame.
    QToolTip::showText(globalPos, markup(text, screen->availableSize() * 2 / 3), owner, area);
}

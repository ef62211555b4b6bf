#pragma once

#include <QRect>

class QAbstractItemView;
class QPoint;
class QString;
class QWidget;

/// Tool tips that show plain text: markup is not interpreted, blanks and line feeds are kept, and
/// long lines break to stay on the screen, between words if possible. GUI thread only.
namespace PlainToolTip {

/// Makes @p widget show its toolTip() as plain text. The property keeps the raw text.
void installOn(QWidget &widget);

/// Makes the items of @p view show their Qt::ToolTipRole as plain text. The role keeps the raw
/// text.
void installOnItemsOf(QAbstractItemView &view);

/// Shows @p text at @p globalPos, or hides the current tip if @p text is empty. The tip disappears
/// when the pointer leaves @p area (in coordinates of @p owner) or, without one, @p owner.
void show(const QPoint &globalPos, const QString &text, QWidget *owner, const QRect &area = {});

} // namespace PlainToolTip

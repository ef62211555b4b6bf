#pragma once

#include <QRect>

class QAbstractItemView;
class QPoint;
class QString;
class QWidget;

/// Tool tips that show a text as it is: markup in it is never interpreted, its blanks and line
/// feeds are kept, and long lines break so that the tip stays on the screen, between words where
/// there are any and anywhere else where there are none. GUI thread only.
namespace PlainToolTip {

/// From now on @p widget shows its toolTip() this way. The property stays the raw text.
void installOn(QWidget &widget);

/// From now on the items of @p view show their Qt::ToolTipRole this way. The role stays the raw
/// text.
void installOnItemsOf(QAbstractItemView &view);

/// Shows @p text at @p globalPos now; hides the tip that is shown if @p text is empty. The tip goes
/// when the pointer leaves @p area (in coordinates of @p owner), or, without one, @p owner.
void show(const QPoint &globalPos, const QString &text, QWidget *owner, const QRect &area = {});

} // namespace PlainToolTip

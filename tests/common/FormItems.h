#pragma once

#include <QLayout>
#include <QString>

/// A description of a layout item for comparison: "lbTitle", "layout horizontalRow", "spacer 20 x
/// 50 Minimum Fixed".
[[nodiscard]] QString describedItem(const QLayout &layout, int index);

/// describedItem() of all items of @p layout, in order.
[[nodiscard]] QStringList describedItems(const QLayout &layout);

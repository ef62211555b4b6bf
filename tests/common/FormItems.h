#pragma once

#include <QLayout>
#include <QString>

/// What one item of a layout is, in words that a test can compare: "lbTitle", "layout
/// horizontalRow", "spacer 20 x 50 Minimum Fixed".
[[nodiscard]] QString describedItem(const QLayout &layout, int index);

/// All items of @p layout, in order, in the words of describedItem().
[[nodiscard]] QStringList describedItems(const QLayout &layout);

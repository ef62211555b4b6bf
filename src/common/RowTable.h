#pragma once

#include "CTableWidget.h"

#include <vector>

/// A table of whole rows, spare rows behind the last one, in the look of the program's tables. A
/// row shows something if its last column has an item. The cursor is always where a text is, and
/// can be seen when Tab leads to the table. It has no Q_OBJECT: its class name, an interface, is
/// CTableWidget. GUI thread only.
class RowTable : public CTableWidget
{
public:
    explicit RowTable(QWidget *parent);

    /// Makes a column for each of @p widths (pixels) and one more, up to the edge, below the
    /// horizontal header that the table has now.
    void setUpColumns(const std::vector<int> &widths);

protected:
    void focusInEvent(QFocusEvent *event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

    [[nodiscard]] bool showsSomething(int row) const;
    /// The first row from @p row on, in steps of @p step, that can be seen and shows something;
    /// outside the table if there is none.
    [[nodiscard]] int nextShownRow(int row, int step) const;
    void keepCursorOnText();
    /// For a paintEvent(): writes @p hint over @p row, or over the row in the middle of the view.
    void drawHint(const QString &hint, int row = -1);
};

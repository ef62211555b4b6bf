#pragma once

#include "CTableWidget.h"

#include <vector>

/// A table that selects whole rows, with spare rows after the last one, in the style of the
/// program. A row counts as shown if its last column has an item. The keyboard cursor is always on
/// a cell with text. Its row is selected when Tab brings the focus and nothing is selected, so that
/// it is seen. No Q_OBJECT: its class name, an interface, is CTableWidget. GUI thread only.
class RowTable : public CTableWidget
{
public:
    explicit RowTable(QWidget *parent);

    /// Creates a column for each of @p widths (pixels) and a last one up to the edge, for the
    /// current horizontal header.
    void setUpColumns(const std::vector<int> &widths);

protected:
    void focusInEvent(QFocusEvent *event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

    [[nodiscard]] bool showsSomething(int row) const;
    /// The first visible row with text, from @p row on in steps of @p step; out of range if there
    /// is none.
    [[nodiscard]] int nextShownRow(int row, int step) const;
    void keepCursorOnText();
    /// For paintEvent(): draws @p hint in @p row, or in the row in the middle of the view.
    void drawHint(const QString &hint, int row = -1);
};

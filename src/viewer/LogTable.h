#pragma once

#include "FoundLine.h"
#include "LogRows.h"
#include "RowTable.h"

#include <optional>

/// The table of log lines: one row per line, with the columns of LogRows. GUI thread only.
class LogTable : public RowTable
{
public:
    /// The number of rows before and during a load, and the maximum number of lines.
    static constexpr int capacity = 100000;

    /// What the rows hold.
    enum class Contents {
        Nothing,
        File,
        StartOfFile, ///< the file has more lines than the table
        LinesBeingFound,
        LinesFound,
    };

    /// The user's position, to be restored after a reload.
    struct Position
    {
        std::optional<FoundLine> foundLine; ///< the current match, otherwise the first visible one
        int currentRow = -1;
        int topRow = 0;
    };

    explicit LogTable(QWidget *parent);

    /// Sets the header texts in the current language.
    void retranslate();
    /// Empties all rows and scrolls to the first one.
    void clearLines();
    /// Shows the lines of the file at @p path and returns their number, or nothing if it cannot be
    /// opened; the table is empty then. Spare rows up to the capacity remain.
    std::optional<int> fill(const QString &path);
    /// Keeps only a few spare rows after the lines.
    void removeSpareRows();
    /// Calls LogRows::place().
    void setLine(std::string_view line, int row) { logRows.place(line, row); }
    /// Sets what the rows hold, and how many lines. If the file has more lines, no line matches or
    /// levels hide matches, a hint and the accessible description say so. The hint is after the
    /// last line or, without lines, in the middle; without a free row there is none.
    void setContents(Contents filled, int lines = 0);
    /// The position for goTo() after the whole log has been loaded again.
    [[nodiscard]] Position position() const;
    void goTo(const Position &position);
    /// Moves the cursor to the first line if it has no position and the table has the focus.
    void placeCursor();
    /// Resets the column widths. The last visible column is stretched.
    void resetColumnWidths();
    /// Hides or shows every row whose level is exactly @p level. Does not scroll.
    void setLevelHidden(const QString &level, bool hidden);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void setCurrentRow(int row);
    void scrollToRow(int row);
    void updateHint();

    LogRows logRows{*this};
    Contents contents = Contents::Nothing;
    int lineCount = 0;
    QString hint;
};

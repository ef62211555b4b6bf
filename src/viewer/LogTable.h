#pragma once

#include "FoundLine.h"
#include "LogRows.h"
#include "RowTable.h"

#include <optional>

/// The table of log lines: a row a line, in the four columns of LogRows. GUI thread only.
class LogTable : public RowTable
{
public:
    /// The rows that are there before and during a load, and the most lines that a load shows.
    static constexpr int capacity = 100000;

    /// What the rows hold.
    enum class Contents {
        Nothing,
        File,
        StartOfFile, ///< of one with more lines than the table takes
        LinesBeingFound,
        LinesFound,
    };

    /// What the user looks at, to be kept when the log is read again.
    struct Place
    {
        std::optional<FoundLine> foundLine; ///< the current line found, else the first in sight
        int currentRow = -1;
        int topRow = 0;
    };

    explicit LogTable(QWidget *parent);

    /// Sets the header texts in the language that is installed now.
    void retranslate();
    /// Empties the rows and goes to the first one.
    void clearLines();
    /// Shows the lines of the file at @p path and returns their number; nothing: it cannot be
    /// opened, and the table is empty. There are spare rows up to the capacity then.
    std::optional<int> fill(const QString &path);
    /// Leaves a few of the spare rows behind the lines.
    void removeSpareRows();
    /// Shows @p line in @p row, as LogRows does.
    void setLine(std::string_view line, int row) { logRows.place(line, row); }
    /// Says what the rows hold now, and how many lines. Where lines are missing from what the user
    /// may expect, the view says why, behind the last line, and so does the accessible description.
    void setContents(Contents filled, int lines = 0);
    /// @return what @p goTo() needs once the rows hold the whole log again.
    [[nodiscard]] Place place() const;
    void goTo(const Place &place);
    /// Puts the cursor on the first line if it is nowhere and the table has the keyboard.
    void placeCursor();
    /// Gives the columns their first widths. The last one that is shown is stretched to the edge.
    void resetColumnWidths();
    /// Hides or shows every row whose level is exactly @p level. What is in sight stays where it
    /// is.
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

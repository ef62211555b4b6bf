#pragma once

#include <QString>

class QTableWidget;

/// A search match, for finding it again in the whole log. A search finds all equal lines or none,
/// in the log's order, so text and ordinal identify a line.
struct FoundLine
{
    QString text;    ///< whole line without its line feed
    int ordinal = 0; ///< number of equal lines before it
};

/// The line in @p row of a table of search matches. A long line takes several rows, one per piece;
/// each stands for the whole line, unless a zero byte cuts it short.
[[nodiscard]] FoundLine foundLineAt(const QTableWidget &table, int row);

/// The row of @p line in a table of whole lines, or -1.
[[nodiscard]] int rowOf(const QTableWidget &table, const FoundLine &line);

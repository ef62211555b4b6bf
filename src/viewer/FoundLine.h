#pragma once

#include <QString>

class QTableWidget;

/// A line that a search found, for finding it again in the whole log. A search finds all equal
/// lines or none, in the log's order, so the text and a number say which one it is.
struct FoundLine
{
    QString text;    ///< whole, without its line feed
    int ordinal = 0; ///< how many lines found before it have the same text
};

/// The line in @p row of a table of lines found. A long line takes several rows, one a piece: each
/// of them stands for the whole line.
[[nodiscard]] FoundLine foundLineAt(const QTableWidget &table, int row);

/// The row of @p line in a table of whole lines; -1: it is not there.
[[nodiscard]] int rowOf(const QTableWidget &table, const FoundLine &line);

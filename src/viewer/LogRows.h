#pragma once

#include <QSignalBlocker>
#include <QStringList>

#include <array>
#include <string>
#include <string_view>

class QTableWidget;

/// Places log lines in the rows of a table with the four columns below.
class LogRows
{
public:
    enum Column { Timestamp, Level, Source, Message, ColumnCount };
    /// Of a message cell of a search match: whether its line continues in the next row.
    static constexpr int ContinuedRole = Qt::UserRole;

    /// @p target must outlive this object.
    explicit LogRows(QTableWidget &target);

    /// Creates the cells of @p row: four for a structured line, otherwise only the message with the
    /// whole line. Each cell's tool tip is the whole line. Does nothing if the table has no such
    /// row.
    void place(std::string_view line, int row);

private:
    void placeCell(int row, Column column, const QString &text, const QString &line);
    QString sourceText(std::string_view source);

    /// Logs have few sources: equal ones share a string.
    struct KnownSource
    {
        std::string bytes;
        QString text;
    };

    QTableWidget &table;
    std::array<KnownSource, 16> knownSources;
};

/// Blocks the model's signals while it exists and announces all changes at once at its end. Makes
/// filling many rows twice as fast.
class ModelSignalBlocker
{
public:
    explicit ModelSignalBlocker(QTableWidget &target);
    ~ModelSignalBlocker();

private:
    QTableWidget &table;
    QSignalBlocker blocker;
};

/// The lines from the first row up to the first row without a timestamp, including hidden rows.
[[nodiscard]] QStringList allLines(const QTableWidget &table);

/// The lines of the selected rows, in the order of selection. Rows from 10000 on are left out.
[[nodiscard]] QStringList selectedLines(const QTableWidget &table);

/// Copies @p lines to the clipboard, unless there is too little memory.
void copyLines(const QStringList &lines);

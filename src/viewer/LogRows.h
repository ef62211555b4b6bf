#pragma once

#include <QStringList>

#include <array>
#include <string>
#include <string_view>

class QTableWidget;

/// Puts log lines into the rows of a table with the four columns below.
class LogRows
{
public:
    enum Column { Timestamp, Level, Source, Message, ColumnCount };

    /// @p target must outlive this object.
    explicit LogRows(QTableWidget &target);

    /// Makes the cells of @p row out of @p line: four of a structured line, else only the message,
    /// the whole line. Each cell's tool tip is the whole line. A row that the table does not have
    /// stays without cells.
    void place(std::string_view line, int row);

private:
    void placeCell(int row, Column column, const QString &text, const QString &line);
    QString sourceText(std::string_view source);

    /// A log has few sources: equal ones share their text.
    struct KnownSource
    {
        std::string bytes;
        QString text;
    };

    QTableWidget &table;
    std::array<KnownSource, 16> knownSources;
};

/// While it lives the table's model keeps silent about its cells; at its end everything is
/// announced at once. Makes filling many rows twice as fast.
class ModelSignalBlocker
{
public:
    explicit ModelSignalBlocker(QTableWidget &target);
    ~ModelSignalBlocker();
    ModelSignalBlocker(const ModelSignalBlocker &) = delete;
    ModelSignalBlocker &operator=(const ModelSignalBlocker &) = delete;

private:
    QTableWidget &table;
    bool wasBlocked;
};

/// The lines of the rows from the first one on, up to the first without a timestamp. Hidden rows
/// are among them.
[[nodiscard]] QStringList allLines(const QTableWidget &table);

/// The lines of the selected rows in the order of selection. Rows numbered 10000 and higher are
/// left out.
[[nodiscard]] QStringList selectedLines(const QTableWidget &table);

/// Puts @p lines onto the clipboard.
void copyLines(const QStringList &lines);

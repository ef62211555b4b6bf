#include "FoundLine.h"

#include "LineSearch.h"
#include "LogRows.h"

#include <QTableWidget>

namespace {

QString rawText(const QTableWidget &table, int row)
{
    const QTableWidgetItem *const cell = table.item(row, LogRows::Message);
    return cell != nullptr ? cell->toolTip() : QString();
}

bool endsLine(const QString &piece)
{
    return piece.isEmpty() || piece.endsWith(QLatin1Char('\n'));
}

/// The line whose first piece is in @p row. Advances @p row to the next line.
QString takeLine(const QTableWidget &table, int &row)
{
    QString line;
    QString piece;
    do {
        piece = rawText(table, row++);
        line += piece;
    } while (!endsLine(piece));
    return line;
}

/// @p line as a search returns it: decoding piece by piece damages characters that span two pieces.
QString decodedInPieces(const QString &line)
{
    const QByteArray bytes = line.toUtf8();
    QString text;
    for (int from = 0; from < bytes.size(); from += int(maxPieceBytes))
        text += QString::fromUtf8(bytes.mid(from, int(maxPieceBytes)));
    return text;
}

} // namespace

FoundLine foundLineAt(const QTableWidget &table, int row)
{
    while (row > 0 && !endsLine(rawText(table, row - 1)))
        --row;
    int end = row;
    FoundLine line{takeLine(table, end)};
    for (int before = 0; before < row;)
        line.ordinal += takeLine(table, before) == line.text ? 1 : 0;
    if (endsLine(line.text))
        line.text.chop(1);
    return line;
}

int rowOf(const QTableWidget &table, const FoundLine &line)
{
    const bool isDamaged = line.text.contains(QChar::ReplacementCharacter);
    int equalBefore = 0;
    for (int row = 0; row < table.rowCount(); ++row) {
        if (table.item(row, LogRows::Message) == nullptr)
            break;
        const QString text = rawText(table, row);
        const bool isEqual = text == line.text || (isDamaged && decodedInPieces(text) == line.text);
        if (isEqual && equalBefore++ == line.ordinal)
            return row;
    }
    return -1;
}

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

bool isContinued(const QTableWidget &table, int row)
{
    const QTableWidgetItem *const cell = table.item(row, LogRows::Message);
    return cell != nullptr && cell->data(LogRows::ContinuedRole).toBool();
}

/// The line whose first piece is in @p row, without its line feed. Advances @p row to the next
/// line.
QString takeLine(const QTableWidget &table, int &row)
{
    QString line = rawText(table, row);
    while (isContinued(table, row++))
        line += rawText(table, row);
    if (line.endsWith(QLatin1Char('\n')))
        line.chop(1);
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

/// Whether @p found is @p line decoded in pieces. The line may have had a byte order mark, which
/// decoding removes.
bool isFoundInPieces(const QString &found, const QString &line)
{
    return decodedInPieces(line) == found ||
           decodedInPieces(QChar(QChar::ByteOrderMark) + line) == found;
}

} // namespace

FoundLine foundLineAt(const QTableWidget &table, int row)
{
    while (row > 0 && isContinued(table, row - 1))
        --row;
    int end = row;
    FoundLine line{takeLine(table, end)};
    for (int before = 0; before < row;)
        line.ordinal += takeLine(table, before) == line.text ? 1 : 0;
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
        const bool isEqual = text == line.text || (isDamaged && isFoundInPieces(line.text, text));
        if (isEqual && equalBefore++ == line.ordinal)
            return row;
    }
    return -1;
}

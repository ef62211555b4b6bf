#include "LogRows.h"

#include "LineBlockReader.h"
#include "LineSearch.h"
#include "LogLine.h"
#include "ViewerLog.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTableWidget>

#include <algorithm>
#include <functional>
#include <iterator>
#include <new>

namespace {

constexpr int copyRowLimit = 10000;
constexpr std::size_t longestKnownSource = 256; // bytes

QString fromUtf8(std::string_view bytes)
{
    return QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
}

/// One shared string per level.
const QString &levelText(std::string_view level)
{
    static const std::array<QString, std::size(logLevels)> texts = [] {
        std::array<QString, std::size(logLevels)> made;
        std::transform(std::begin(logLevels), std::end(logLevels), made.begin(), fromUtf8);
        return made;
    }();
    const auto found = std::find(std::begin(logLevels), std::end(logLevels), level);
    return texts[static_cast<std::size_t>(found - std::begin(logLevels))];
}

/// A line and its decoded text, for decoding parts of it.
class LineText
{
public:
    explicit LineText(std::string_view line)
        : bytes(line)
        , whole(fromUtf8(line))
    {
    }

    [[nodiscard]] const QString &text() const { return whole; }

    [[nodiscard]] QString part(std::string_view field) const
    {
        // One character per byte: the decoded line can be sliced.
        if (static_cast<std::size_t>(whole.size()) != bytes.size())
            return fromUtf8(field);
        return field.empty() ? QString()
                             : whole.mid(static_cast<int>(field.data() - bytes.data()),
                                         static_cast<int>(field.size()));
    }

private:
    std::string_view bytes;
    QString whole;
};

/// A cell that stores its two texts directly. Qt's list of roles and values would cost two more
/// allocations per cell.
class LogCell : public QTableWidgetItem
{
public:
    LogCell(const QString &cellText, const QString &wholeLine)
        : shown(cellText)
        , line(wholeLine)
    {
    }

    [[nodiscard]] QVariant data(int role) const override
    {
        switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return shown;
        case Qt::ToolTipRole:
            return line;
        default:
            return QTableWidgetItem::data(role);
        }
    }

    void setData(int role, const QVariant &value) override
    {
        if (role == Qt::DisplayRole || role == Qt::EditRole)
            shown = value.toString();
        else if (role == Qt::ToolTipRole)
            line = value.toString();
        QTableWidgetItem::setData(role, value); // notifies the table
    }

private:
    QString shown;
    QString line;
};

} // namespace

LogRows::LogRows(QTableWidget &target)
    : table(target)
{
}

void LogRows::place(std::string_view line, int row)
{
    if (row < 0 || row >= table.rowCount())
        return;
    line = line.substr(0, LineBlockReader::maxLineBytes);
    const LineText text(line);
    const LogLine fields = splitLogLine(line);
    if (fields.structured) {
        // First: they may run out of memory.
        const QString source = sourceText(fields.source);
        const QString message = text.part(fields.message);
        placeCell(row, Timestamp, text.part(fields.timestamp), text.text());
        placeCell(row, Level, levelText(fields.level), text.text());
        placeCell(row, Source, source, text.text());
        placeCell(row, Message, message, text.text());
    } else {
        placeCell(row, Message, text.text(), text.text());
    }
    if (line.size() == maxPieceBytes && line.back() != '\n')
        table.item(row, Message)->setData(ContinuedRole, true);
}

void LogRows::placeCell(int row, Column column, const QString &text, const QString &line)
{
    table.setItem(row, column, new LogCell(text, line)); // takes ownership
}

QString LogRows::sourceText(std::string_view source)
{
    if (source.size() > longestKnownSource)
        return fromUtf8(source);
    KnownSource &known = knownSources[std::hash<std::string_view>()(source) % knownSources.size()];
    if (known.bytes != source)
        known = {std::string(source), fromUtf8(source)};
    return known.text;
}

ModelSignalBlocker::ModelSignalBlocker(QTableWidget &target)
    : table(target)
    , blocker(target.model())
{
}

ModelSignalBlocker::~ModelSignalBlocker()
{
    blocker.unblock();
    QAbstractItemModel *const model = table.model();
    if (table.rowCount() > 0)
        emit model->dataChanged(model->index(0, 0),
                                model->index(table.rowCount() - 1, table.columnCount() - 1));
}

QStringList allLines(const QTableWidget &table)
{
    QStringList lines;
    for (int row = 0; row < table.rowCount(); ++row) {
        const QTableWidgetItem *const cell = table.item(row, LogRows::Timestamp);
        if (cell == nullptr)
            break;
        lines.append(cell->toolTip());
    }
    return lines;
}

QStringList selectedLines(const QTableWidget &table)
{
    QStringList lines;
    int lastRow = -1;
    const QList<QTableWidgetItem *> selected = table.selectedItems();
    for (const QTableWidgetItem *cell : selected) {
        if (cell->row() == lastRow)
            continue;
        lastRow = cell->row();
        if (lastRow < copyRowLimit)
            lines.append(cell->toolTip());
    }
    return lines;
}

void copyLines(const QStringList &lines)
{
    try {
        QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
    } catch (const std::bad_alloc &) { // leaving a slot would end the program
        qCWarning(viewerLog) << "out of memory, nothing copied";
    }
}

#include "FileTable.h"

FileTable::FileTable(QWidget *parent)
    : CTableWidget(parent)
{
}

int FileTable::fileCount() const
{
    int row = 0;
    while (item(row, NameColumn) != nullptr)
        ++row;
    return row;
}

void FileTable::setHintWhenEmpty(const QString &hint)
{
    hintWhenEmpty = hint;
    setAccessibleDescription(fileCount() == 0 ? hint : QString());
    viewport()->update();
}

QModelIndex FileTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    // The base class's Home and End move among the columns of a row, which whole-row selection
    // hides; its other moves may end on a spare row.
    const int lastRow = fileCount() - 1;
    const int column = qMax<int>(currentColumn(), TimeColumn);
    if (action == MoveHome)
        return model()->index(qMin(0, lastRow), column);
    const QModelIndex moved = CTableWidget::moveCursor(action, modifiers);
    return action == MoveEnd || moved.row() > lastRow ? model()->index(lastRow, column) : moved;
}

void FileTable::paintEvent(QPaintEvent *event)
{
    CTableWidget::paintEvent(event);
    if (fileCount() == 0)
        drawHint(hintWhenEmpty);
}

#include "FileTable.h"

int FileTable::fileCount() const
{
    return nextShownRow(rowCount() - 1, -1) + 1;
}

void FileTable::setHintWhenEmpty(const QString &hint)
{
    hintWhenEmpty = hint;
    setAccessibleDescription(fileCount() == 0 ? hint : QString());
    viewport()->update();
}

void FileTable::paintEvent(QPaintEvent *event)
{
    RowTable::paintEvent(event);
    if (fileCount() == 0)
        drawHint(hintWhenEmpty);
}

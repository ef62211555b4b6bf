#pragma once

#include "RowTable.h"

/// The table of the main window: a row a file. While there are none, the view shows a hint. GUI
/// thread only.
class FileTable : public RowTable
{
public:
    enum Column { CheckColumn, TimeColumn, NameColumn, SizeColumn, ColumnCount };

    using RowTable::RowTable;

    /// The number of rows that show a file.
    [[nodiscard]] int fileCount() const;
    /// Sets what the view shows while there is no file, and screen readers tell: plain text.
    void setHintWhenEmpty(const QString &hint);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString hintWhenEmpty;
};

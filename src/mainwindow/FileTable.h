#pragma once

#include "RowTable.h"

/// The main window's table: one row per file, followed by spare rows. Without files the view shows
/// a hint. GUI thread only.
class FileTable : public RowTable
{
public:
    enum Column { CheckColumn, TimeColumn, NameColumn, SizeColumn, ColumnCount };

    using RowTable::RowTable;

    /// The number of rows with a file.
    [[nodiscard]] int fileCount() const;
    /// Sets the plain text that the view and screen readers show while there is no file.
    void setHintWhenEmpty(const QString &hint);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString hintWhenEmpty;
};

#pragma once

#include "CTableWidget.h"

/// The table of the main window: a row a file, spare rows behind the last one. The keyboard's
/// cursor stays on the files, and while there are none the view shows a hint. It has no Q_OBJECT:
/// its class name, an interface, is CTableWidget. GUI thread only.
class FileTable : public CTableWidget
{
public:
    enum Column { CheckColumn, TimeColumn, NameColumn, SizeColumn, ColumnCount };

    explicit FileTable(QWidget *parent);

    /// The number of rows that show a file.
    [[nodiscard]] int fileCount() const;
    /// Sets what the view shows while there is no file, and screen readers tell: plain text.
    void setHintWhenEmpty(const QString &hint);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString hintWhenEmpty;
};

#pragma once

#include "CTableWidget.h"
#include "QCheckBoxHeader.h"
#include "QUserCheckBox.h"

#include <QAccessible>
#include <QHBoxLayout>

/// The accessible interface of @p object.
inline QAccessibleInterface *seen(QObject *object)
{
    return QAccessible::queryAccessibleInterface(object);
}

/// A table of two rows with time, name and check box, and a check box in the header.
struct FileTable
{
    FileTable()
    {
        table.setHorizontalHeader(new QCheckBoxHeader(0, Qt::Horizontal, &table));
        table.setColumnCount(3);
        table.setHorizontalHeaderLabels({QString(), "Time", "Name"});
        table.setRowCount(3);
        for (int row = 0; row < 2; ++row) {
            auto *cell = new QWidget;
            boxes[row] = new QUserCheckBox(row, cell);
            boxes[row]->setAccessibleName(QString("%1.log").arg(row));
            (new QHBoxLayout(cell))->addWidget(boxes[row]);
            table.setCellWidget(row, 0, cell);
            table.setItem(row, 1, new QTableWidgetItem(QString("time %1").arg(row)));
            table.setItem(row, 2, new QTableWidgetItem(QString("%1.log").arg(row)));
        }
        table.setSelectionBehavior(QAbstractItemView::SelectRows);
        table.resize(600, 300);
        table.show();
    }

    [[nodiscard]] QAccessibleInterface *cell(int row, int column)
    {
        return seen(&table)->tableInterface()->cellAt(row, column);
    }

    CTableWidget table{nullptr};
    QUserCheckBox *boxes[2] = {};
};

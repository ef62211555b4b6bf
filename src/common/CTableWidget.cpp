#include "CTableWidget.h"

#include <QFocusEvent>
#include <QPainter>
#include <QTextOption>

CTableWidget::CTableWidget(QWidget *parent)
    : QTableWidget(parent)
{
}

void CTableWidget::focusInEvent(QFocusEvent *event)
{
    QTableWidget::focusInEvent(event);
    const bool byKey =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byKey && currentIndex().isValid() && !selectionModel()->hasSelection())
        selectionModel()->select(currentIndex(),
                                 QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void CTableWidget::enterEvent(QEvent *event)
{
    setCursor(Qt::ArrowCursor);
    QWidget::enterEvent(event);
}

void CTableWidget::drawHint(const QString &hint, int row)
{
    QRectF area = viewport()->rect();
    if (row < 0)
        row = rowAt(int(area.center().y()));
    if (row >= 0) // which may have a colour of its own
        area.moveCenter({area.center().x(), rowViewportPosition(row) + rowHeight(row) / 2.0});
    QTextOption wrapped(Qt::AlignCenter);
    wrapped.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere); // a path may have no blanks
    QPainter(viewport()).drawText(area, hint, wrapped);
}

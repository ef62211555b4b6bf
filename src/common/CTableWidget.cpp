#include "CTableWidget.h"

#include <QFocusEvent>

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

#include "CTableWidget.h"

CTableWidget::CTableWidget(QWidget *parent)
    : QTableWidget(parent)
{
}

void CTableWidget::enterEvent(QEvent *event)
{
    setCursor(Qt::ArrowCursor);
    QWidget::enterEvent(event);
}

#include "CTableWidget.h"

void CTableWidget::enterEvent(QEvent *event)
{
    setCursor(Qt::ArrowCursor);
    QWidget::enterEvent(event);
}

#include "moc_CTableWidget.cpp"

#pragma once

#include <QTableWidget>

/// A table that resets a resize cursor set by the frame around it.
class CTableWidget : public QTableWidget
{
    Q_OBJECT

public:
    using QTableWidget::QTableWidget;

protected:
    void enterEvent(QEvent *event) override;
};

#pragma once

#include <QTableWidget>

/// A table that takes back the resize cursor which the frame around it may have set.
class CTableWidget : public QTableWidget
{
    Q_OBJECT

public:
    using QTableWidget::QTableWidget;

protected:
    void enterEvent(QEvent *event) override;
};

#pragma once

#include <QTableWidget>

/// A table that takes back the resize cursor which the frame around it may have set, and that shows
/// the row where the keyboard is when Tab leads to it.
class CTableWidget : public QTableWidget
{
    Q_OBJECT

public:
    explicit CTableWidget(QWidget *parent);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void enterEvent(QEvent *event) override;

    /// For a paintEvent(): writes @p hint over @p row, or over the row in the middle of the view.
    void drawHint(const QString &hint, int row = -1);
};

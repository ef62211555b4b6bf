#pragma once

#include <QHeaderView>

class QCheckBox;

/// A table header with a check box in one section that ticks or clears all rows.
class QCheckBoxHeader : public QHeaderView
{
    Q_OBJECT

public:
    /// @p checkColumn: the logical section with the check box.
    QCheckBoxHeader(int checkColumn, Qt::Orientation orientation, QWidget *parent);
    ~QCheckBoxHeader() override;

    /// Sets the check box without emitting checkStausChange().
    void setChecked(bool checked);
    [[nodiscard]] int boxColumn() const { return checkColumn; }

signals:
    /// The user has clicked the check box; it is now @p checked.
    void checkStausChange(bool checked);

protected:
    void paintEvent(QPaintEvent *event) override;
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private slots:
    void onCheckBoxClicked();

private:
    void placeBox(const QRect &section) const;

    int checkColumn;
    QCheckBox *checkBox; ///< child widget, positioned when the header is painted
};

#pragma once

#include <QCheckBox>

/// A check box that stores its table row.
class QUserCheckBox : public QCheckBox
{
    Q_OBJECT

public:
    explicit QUserCheckBox(int row, QWidget *parent = nullptr);

    [[nodiscard]] int tableRow() const { return row; }

private:
    int row;
};

#pragma once

#include <QLineEdit>

/// A line edit that selects its text when it gets the focus and has no context menu.
class CQZLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit CQZLineEdit(QWidget *parent);

protected:
    void focusInEvent(QFocusEvent *event) override;
};

#include "QUserCheckBox.h"

QUserCheckBox::QUserCheckBox(int tableRow, QWidget *parent)
    : QCheckBox(parent)
    , row(tableRow)
{
}

#include "moc_QUserCheckBox.cpp"

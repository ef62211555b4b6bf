#include "CComboBoxEx.h"

#include <QListView>

CComboBoxEx::CComboBoxEx(QWidget *parent)
    : QComboBox(parent)
    , listView(new QListView(parent))
{
    setView(listView);
}

void CComboBoxEx::showPopup()
{
    popupShown = true;
    QComboBox::showPopup();
}

void CComboBoxEx::hidePopup()
{
    popupShown = false;
    if (view()->isVisible())
        emit signalFocusOut();
    QComboBox::hidePopup();
}

void CComboBoxEx::paintEvent(QPaintEvent *event)
{
    QComboBox::paintEvent(event);
}

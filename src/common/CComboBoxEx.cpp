#include "CComboBoxEx.h"

#include "PlainToolTip.h"

#include <QListView>
#include <QStyledItemDelegate>

CComboBoxEx::CComboBoxEx(QWidget *parent)
    : QComboBox(parent)
    , listView(new QListView(parent))
{
    setView(listView);
    setItemDelegate(new QStyledItemDelegate(this)); // follows the style sheet
    PlainToolTip::installOn(*this);                 // folder names are not markup
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

#include "moc_CComboBoxEx.cpp"

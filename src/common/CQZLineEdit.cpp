#include "CQZLineEdit.h"

#include "PlainToolTip.h"

#include <QTimer>

CQZLineEdit::CQZLineEdit(QWidget *parent)
    : QLineEdit(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setContextMenuPolicy(Qt::NoContextMenu);
    PlainToolTip::installOn(*this); // paths are not markup
}

void CQZLineEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    // A mouse press that sets the focus would clear a selection made here.
    QTimer::singleShot(0, this, &QLineEdit::selectAll);
}

#include "moc_CQZLineEdit.cpp"

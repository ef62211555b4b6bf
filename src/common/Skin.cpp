#include "Skin.h"

#include <QFile>
#include <QWidget>

void Skin::applyStyleSheet(QWidget &widget)
{
    QFile sheet(styleSheet);
    if (sheet.open(QIODevice::ReadOnly))
        widget.setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

void Skin::applyStyleSheet(QWidget &widget, QLatin1String fontSheet)
{
    QFile sheet(styleSheet);
    QFile fonts(fontSheet);
    if (!sheet.open(QIODevice::ReadOnly) || !fonts.open(QIODevice::ReadOnly))
        return;
    // Qt remembers what it has read of the widget's sheet before, and forgets it only for a widget
    // that is polished already.
    widget.ensurePolished();
    widget.setStyleSheet(QString::fromUtf8(sheet.readAll() + fonts.readAll()));
}

#include "Skin.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QWidget>

namespace {

const QLatin1String folder("Skins/Default/Vantrel");
const QLatin1String searchPath("skin"); // for QDir::setSearchPaths()
const QLatin1String inFallback("skin:");

bool liesInFallback()
{
    return !QFileInfo(folder).isDir() && QFileInfo(inFallback + folder).isDir();
}

QString withPicturesFound(QString sheet)
{
    // Qt resolves relative paths in a sheet against the working directory.
    if (liesInFallback())
        sheet.replace(QLatin1String("url(Skins/"), QLatin1String("url(skin:Skins/"));
    return sheet;
}

} // namespace

void Skin::setFallbackFolder(const QString &path)
{
    QDir::setSearchPaths(searchPath, {path});
}

QString Skin::path(QLatin1String file)
{
    return liesInFallback() ? inFallback + file : file;
}

void Skin::applyStyleSheet(QWidget &widget)
{
    QFile sheet(path(styleSheet));
    if (sheet.open(QIODevice::ReadOnly))
        widget.setStyleSheet(withPicturesFound(QString::fromUtf8(sheet.readAll())));
}

void Skin::applyStyleSheet(QWidget &widget, QLatin1String fontSheet)
{
    QFile sheet(path(styleSheet));
    QFile fonts(path(fontSheet));
    if (!sheet.open(QIODevice::ReadOnly) || !fonts.open(QIODevice::ReadOnly))
        return;
    // Qt caches the widget's previous sheet and drops the cache only if the widget is polished.
    widget.ensurePolished();
    widget.setStyleSheet(withPicturesFound(QString::fromUtf8(sheet.readAll() + fonts.readAll())));
}

void Skin::findPictures(QWidget &widget)
{
    if (liesInFallback())
        widget.setStyleSheet(withPicturesFound(widget.styleSheet()));
}

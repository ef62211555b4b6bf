#include "OpenedUrls.h"

#include <QDesktopServices>

OpenedUrls::OpenedUrls()
{
    QDesktopServices::setUrlHandler("file", this, "open");
}

OpenedUrls::~OpenedUrls()
{
    QDesktopServices::unsetUrlHandler("file");
}

void OpenedUrls::open(const QUrl &url)
{
    opened.append(url);
}

#include "moc_OpenedUrls.cpp"

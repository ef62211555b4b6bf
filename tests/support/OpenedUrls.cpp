#include "OpenedUrls.h"

#include <QDesktopServices>

OpenedUrls::OpenedUrls()
{
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open");
}

OpenedUrls::~OpenedUrls()
{
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
}

void OpenedUrls::open(const QUrl &url)
{
    opened.append(url);
}

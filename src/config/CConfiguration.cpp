#include "CConfiguration.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

QSize primaryScreenSize()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->geometry().size() : QSize();
}

QPoint fit(int x, int below, int above, const QSize &size, const QSize &screen)
{
    const int y = below + size.height() > screen.height() ? qMax(above - size.height(), 0) : below;
    if (x + size.width() > screen.width())
        x = qMax(screen.width() - size.width() - 1, 0);
    return {x, y};
}

} // namespace

CConfiguration *CConfiguration::instance()
{
    static CConfiguration hub;
    return &hub;
}

QPoint CConfiguration::fitOnScreen(const QPoint &point, const QSize &size)
{
    return fitOnScreen(point, size, primaryScreenSize());
}

QPoint CConfiguration::fitOnScreen(const QPoint &point, const QSize &size, const QSize &screen)
{
    return fit(point.x(), point.y(), point.y(), size, screen);
}

QPoint CConfiguration::fitOnScreen(const QRect &rect, const QSize &size)
{
    return fitOnScreen(rect, size, primaryScreenSize());
}

QPoint CConfiguration::fitOnScreen(const QRect &rect, const QSize &size, const QSize &screen)
{
    return fit(rect.left(), rect.bottom(), rect.top(), size, screen);
}

#include "moc_CConfiguration.cpp"

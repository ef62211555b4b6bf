#include "CameraClient.h"

#include <QSettings>
#include <QStringList>

CameraClient registeredCameraClient()
{
    QSettings settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Pemberk"),
                       QStringLiteral("qzcfgfile"));
    settings.setIniCodec("UTF-8");
    // Written by hand without quotes, "…exe,0" is a list of two to an INI file.
    const QStringList parts = settings.value(QStringLiteral("DefaultIcon")).toStringList();
    return {parts.join(QLatin1Char(',')), QStringLiteral("\\/")};
}

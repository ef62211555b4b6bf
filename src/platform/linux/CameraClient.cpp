#include "CameraClient.h"

#include <QSettings>
#include <QStringList>

CameraClient registeredCameraClient()
{
    QSettings settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Pemberk"),
                       QStringLiteral("qzcfgfile"));
    settings.setIniCodec("UTF-8");
    // Without quotes, an INI file reads "…exe,0" as a list of two.
    const QStringList parts = settings.value(QStringLiteral("DefaultIcon")).toStringList();
    return {parts.join(QLatin1Char(',')), QStringLiteral("\\/")};
}

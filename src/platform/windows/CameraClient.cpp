#include "CameraClient.h"

#include <QSettings>

CameraClient registeredCameraClient()
{
    const QSettings key(
        QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\qzcfgfile\\DefaultIcon"),
        QSettings::NativeFormat);
    return {key.value(QStringLiteral(".")).toString(), QStringLiteral("\\")};
}

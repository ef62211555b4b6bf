#include "CameraClient.h"

#include <QSettings>

CameraClient registeredCameraClient()
{
    // Not opened at the client's own key, which QSettings would create if it has the rights to.
    const QSettings classes(QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes"),
                            QSettings::NativeFormat);
    return {classes.value(QStringLiteral("qzcfgfile/DefaultIcon/.")).toString(),
            QStringLiteral("\\")};
}

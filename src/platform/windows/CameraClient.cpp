#include "CameraClient.h"

#include <QSettings>

CameraClient registeredCameraClient()
{
    // Not opened on the client's own key, which QSettings would create where it may.
    const QSettings classes(QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes"),
                            QSettings::NativeFormat);
    return {classes.value(QStringLiteral("qzcfgfile/DefaultIcon/.")).toString(),
            QStringLiteral("\\")};
}

#include "UserEnvironment.h"

#include <QStandardPaths>

UserEnvironment systemEnvironment()
{
    return {QStandardPaths::writableLocation(QStandardPaths::HomeLocation),
            registeredCameraClient()};
}

#include "ClientRegistration.h"

#include <QFile>
#include <QSettings>

ClientRegistration::ClientRegistration(const QString &configFolder, const QString &iconPath)
    : place(configFolder + "/Pemberk/qzcfgfile.ini")
{
    QSettings settings(place, QSettings::IniFormat);
    settings.setValue("DefaultIcon", iconPath);
}

ClientRegistration::~ClientRegistration()
{
    QFile::remove(place);
}

bool ClientRegistration::available()
{
    return true;
}

#include "ClientRegistration.h"

#include <QFile>
#include <QSettings>

ClientRegistration::ClientRegistration(const QString &configFolder, const QString &iconPath)
    : place(configFolder + QLatin1String("/Pemberk/qzcfgfile.ini"))
{
    QSettings settings(place, QSettings::IniFormat);
    settings.setValue(QStringLiteral("DefaultIcon"), iconPath);
}

ClientRegistration::~ClientRegistration()
{
    QFile::remove(place);
}

bool ClientRegistration::available()
{
    return true;
}

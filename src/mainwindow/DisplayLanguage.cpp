#include "DisplayLanguage.h"

#include <QSettings>

#include <algorithm>

namespace {
constexpr int longestName = 259; // bytes: Windows' path limit without the terminating zero
}

QString clientNameFromIcon(const CameraClient &client)
{
    const QString &path = client.iconPath;
    const auto isSeparator = [&client](QChar c) { return client.pathSeparators.contains(c); };
    const auto separator = std::find_if(path.crbegin(), path.crend(), isSeparator);
    const auto nameAt = int(path.crend() - separator); // 0: no separator
    const int nameEnd = path.lastIndexOf(QLatin1String(".exe"));
    if (nameAt == 0 || nameEnd < nameAt)
        return {};
    const QString name = path.mid(nameAt, nameEnd - nameAt);
    return name.toUtf8().size() <= longestName ? name : QString();
}

DisplayLanguage chooseLanguage(const UserEnvironment &environment)
{
    const QString name = clientNameFromIcon(environment.client);
    if (name.isEmpty())
        return DisplayLanguage::English;
    const QSettings file(environment.homeFolder + QStringLiteral("/AppData/Roaming/") + name +
                             QStringLiteral("/language.ini"),
                         QSettings::IniFormat);
    return file.value(QStringLiteral("language/lang"), 0).toInt() == 1 ? DisplayLanguage::English
                                                                       : DisplayLanguage::Chinese;
}

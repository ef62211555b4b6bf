#include "DisplayLanguage.h"

#include <QSettings>

#include <algorithm>

namespace {
constexpr int longestName = 259; // bytes: the platform's path limit less the closing zero
}

QString clientNameFromIcon(const CameraClient &client)
{
    QString reversed = client.iconPath;
    std::reverse(reversed.begin(), reversed.end());
    const QString ending = QStringLiteral("exe.");
    const int endingAt = reversed.indexOf(ending);
    const auto separator = std::find_if(reversed.cbegin(), reversed.cend(), [&client](QChar c) {
        return client.pathSeparators.contains(c);
    });
    const int nameAt = endingAt + ending.size();
    const auto nameEnd = int(separator - reversed.cbegin());
    if (endingAt < 0 || separator == reversed.cend() || nameEnd < nameAt)
        return {};

    QString name = reversed.mid(nameAt, nameEnd - nameAt);
    std::reverse(name.begin(), name.end());
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

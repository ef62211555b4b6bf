// The client's registration: every registered path is read back, and the rest of the file changes
// nothing. The first byte of an input selects how the rest is used.
#include "CameraClient.h"
#include "ClientRegistration.h"
#include "DisplayLanguage.h"
#include "Fuzz.h"
#include "Redated.h"

#include <QSettings>

#include <algorithm>

namespace {

const QString fileName = QStringLiteral("Pemberk/qzcfgfile.ini");

/// The only place where the registration is looked for in this process.
ScratchFolder &config()
{
    static ScratchFolder folder;
    static const bool prepared = [] {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope,
                           folder.path(QStringLiteral("system")));
        return true;
    }();
    demand(prepared, "the folder is the users'");
    return folder;
}

QString registeredIn(const QByteArray &file)
{
    config().file(fileName, file);
    redate(config(), fileName);
    return registeredCameraClient().iconPath;
}

void tryRegistered(const QByteArray &rest)
{
    const QString path = QString::fromUtf8(rest);
    const ClientRegistration registration(config().path(), path);
    redate(config(), fileName);
    demand(registeredCameraClient().iconPath == path, "a registered path comes back");
}

void tryWrittenByHand(const QByteArray &rest)
{
    static const QStringList letters =
        QStringLiteral("a b c d e Q Z 0 1 8 9 / . _ - : ( ) + ~ , ü 李 机 𠀀")
            .split(QLatin1Char(' '));
    QString path;
    for (const char letter : rest)
        path += letters[static_cast<unsigned char>(letter) % letters.size()];
    demand(registeredIn("[General]\nDefaultIcon=" + path.toUtf8() + "\n") == path,
           "a path without quotes comes back");
}

void tryAnyFile(const QByteArray &rest)
{
    const CameraClient client{registeredIn("[General]\n" + rest), QStringLiteral("\\/")};
    demand(clientNameFromIcon(client).toUtf8().size() < 260, "a name has its limit");
    // Keys can contain escapes too.
    if (rest.contains("DefaultIcon") || rest.contains('%'))
        return;
    demand(client.iconPath.isEmpty(), "what is not registered is not found");
    demand(registeredIn("[General]\nDefaultIcon=/a/b.exe\n" + rest) == QStringLiteral("/a/b.exe"),
           "what follows changes nothing");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray rest(reinterpret_cast<const char *>(data + 1), int(size - 1));
    switch (data[0] % 3) {
    case 0:
        tryRegistered(rest);
        break;
    case 1:
        tryWrittenByHand(rest);
        break;
    default:
        tryAnyFile(rest);
        break;
    }
    return 0;
}

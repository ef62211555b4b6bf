#include "ClientRegistration.h"

#include <QProcess>

namespace {

void changeRegistry(const QStringList &arguments)
{
    if (QProcess::execute(QStringLiteral("reg"), arguments) != 0)
        qFatal("reg %s failed", qPrintable(arguments.join(QLatin1Char(' '))));
}

} // namespace

ClientRegistration::ClientRegistration(const QString & /*configFolder*/, const QString &iconPath)
    : place(QStringLiteral("HKLM\\SOFTWARE\\Classes\\qzcfgfile"))
{
    changeRegistry({QStringLiteral("add"), place + QLatin1String("\\DefaultIcon"),
                    QStringLiteral("/ve"), QStringLiteral("/d"), iconPath, QStringLiteral("/f")});
}

ClientRegistration::~ClientRegistration()
{
    changeRegistry({QStringLiteral("delete"), place, QStringLiteral("/f")});
}

bool ClientRegistration::available()
{
    return qEnvironmentVariableIsSet("VANTREL_SCRATCH_WINDOWS");
}

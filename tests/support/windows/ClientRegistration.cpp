#include "ClientRegistration.h"

#include <QProcess>

namespace {

void changeRegistry(const QStringList &arguments)
{
    QProcess reg;
    reg.setProcessChannelMode(QProcess::ForwardedChannels);
    reg.start("reg", arguments);
    if (!reg.waitForFinished() || reg.exitCode() != 0)
        qFatal("reg %s ended with %d: %s", qPrintable(arguments.join(' ')), reg.exitCode(),
               qPrintable(reg.errorString()));
}

} // namespace

ClientRegistration::ClientRegistration(const QString & /*configFolder*/, const QString &iconPath)
    : place("HKLM\\SOFTWARE\\Classes\\qzcfgfile")
{
    changeRegistry({"add", place + "\\DefaultIcon", "/ve", "/d", iconPath, "/f"});
}

ClientRegistration::~ClientRegistration()
{
    changeRegistry({"delete", place, "/f"});
}

bool ClientRegistration::available()
{
    return qEnvironmentVariableIsSet("VANTREL_SCRATCH_WINDOWS");
}

#include "ClientRegistration.h"

#include <QProcess>

namespace {

void changeRegistry(const QStringList &arguments)
{
    if (QProcess::execute("reg", arguments) != 0)
        qFatal("reg %s failed", qPrintable(arguments.join(' ')));
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

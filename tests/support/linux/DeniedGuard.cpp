#include "DeniedGuard.h"

DeniedGuard::DeniedGuard(const QString & /*key*/) {}

DeniedGuard::~DeniedGuard() = default;

QMap<QString, QString> DeniedGuard::variables()
{
    // A folder that takes no new files, not even from root.
    return {{QStringLiteral("TMPDIR"), QStringLiteral("/proc")}};
}

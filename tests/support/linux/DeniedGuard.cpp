#include "DeniedGuard.h"

DeniedGuard::DeniedGuard(const QString & /*key*/) {}

DeniedGuard::~DeniedGuard() = default;

QMap<QString, QString> DeniedGuard::variables()
{
    // A folder in which not even root can create files.
    return {{"TMPDIR", "/proc"}};
}

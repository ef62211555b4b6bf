#pragma once

#include <QMap>
#include <QString>

/// While it lives, no shared memory can be made under @p key by a process that is started with
/// variables().
class DeniedGuard
{
public:
    explicit DeniedGuard(const QString &key);
    ~DeniedGuard();
    DeniedGuard(const DeniedGuard &) = delete;
    DeniedGuard &operator=(const DeniedGuard &) = delete;

    [[nodiscard]] static QMap<QString, QString> variables();

private:
    void *taken = nullptr;
};

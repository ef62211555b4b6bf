#pragma once

#include <QMap>
#include <QString>

/// While it exists, a process started with variables() cannot create shared memory under @p key.
class DeniedGuard
{
public:
    explicit DeniedGuard(const QString &key);
    ~DeniedGuard();
    DeniedGuard(const DeniedGuard &) = delete;
    DeniedGuard &operator=(const DeniedGuard &) = delete;

    [[nodiscard]] static QMap<QString, QString> variables();

private:
    [[maybe_unused]] void *taken = nullptr; // a handle on Windows
};

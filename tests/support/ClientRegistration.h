#pragma once

#include <QString>

/// Registers the camera client while it exists, for this process and for child processes with @p
/// configFolder as XDG_CONFIG_HOME. Where the registration is system-wide, as on Windows, it is
/// available on test machines only.
class ClientRegistration
{
public:
    ClientRegistration(const QString &configFolder, const QString &iconPath);
    ~ClientRegistration();
    ClientRegistration(const ClientRegistration &) = delete;
    ClientRegistration &operator=(const ClientRegistration &) = delete;

    /// Tests that need it are skipped if it is not available.
    [[nodiscard]] static bool available();

private:
    QString place;
};

#pragma once

#include <QString>

/// While it lives, the camera client counts as installed: for this process, and for those that it
/// starts with @p configFolder as their XDG_CONFIG_HOME. Where the registration is the whole
/// system's, as on Windows, only a system that is there for tests is touched.
class ClientRegistration
{
public:
    ClientRegistration(const QString &configFolder, const QString &iconPath);
    ~ClientRegistration();
    ClientRegistration(const ClientRegistration &) = delete;
    ClientRegistration &operator=(const ClientRegistration &) = delete;

    /// Otherwise a test that needs it is skipped.
    [[nodiscard]] static bool available();

private:
    QString place;
};

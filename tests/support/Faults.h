#pragma once

#include <QFileDevice>
#include <QString>

// Real faults, caused by system means. If available() is false on a system, tests that need the
// fault are skipped.

/// While it exists, file permissions apply to this process even if it runs as root.
class OrdinaryUser
{
public:
    OrdinaryUser();
    ~OrdinaryUser();
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

    [[nodiscard]] static bool available();

private:
    bool dropped = false;
};

/// Equal permissions for the owner and everybody else, including OrdinaryUser.
namespace Everybody {
constexpr QFileDevice::Permissions mayDoAll(0x7777);
constexpr QFileDevice::Permissions mayReadAndWrite(0x6666);
constexpr QFileDevice::Permissions mayReadAndEnter(0x5555);
constexpr QFileDevice::Permissions mayRead(0x4444);
constexpr QFileDevice::Permissions mayWrite(0x2222);
} // namespace Everybody

/// Creates @p link as a link to the file or folder at @p target. Returns false if links are not
/// available to this user.
[[nodiscard]] bool makeLink(const QString &target, const QString &link);

/// While it exists, no file of this process can grow beyond @p bytes: such a write is cut short and
/// then fails, as on a full disk.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(long bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

    [[nodiscard]] static bool available();
};

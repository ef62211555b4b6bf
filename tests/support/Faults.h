#pragma once

#include <QFileDevice>
#include <QString>

// Faults made for real, by the means of the system. Where a system has no such means, available()
// is false and the test that needs it says so and is skipped.

/// While it lives, this process may do no more than an ordinary user: file permissions bind root
/// too. For a process that is not root it does nothing, because there they bind already.
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

/// Rights to a file or folder that its owner and all others have alike, OrdinaryUser among them.
namespace Everybody {
constexpr QFileDevice::Permissions mayDoAll(0x7777);
constexpr QFileDevice::Permissions mayReadAndWrite(0x6666);
constexpr QFileDevice::Permissions mayReadAndEnter(0x5555);
constexpr QFileDevice::Permissions mayRead(0x4444);
constexpr QFileDevice::Permissions mayWrite(0x2222);
} // namespace Everybody

/// Makes @p link a link to the file or folder at @p target. False where the system has no links, or
/// none for this user.
[[nodiscard]] bool makeLink(const QString &target, const QString &link);

/// While it lives, no file of this process can grow beyond @p bytes: a write that would is cut
/// short and then fails, just as on a full disk.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(long bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

    [[nodiscard]] static bool available();
};

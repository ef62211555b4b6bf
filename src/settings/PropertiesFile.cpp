#include "PropertiesFile.h"

#include "SettingsLog.h"
#include "SharedFile.h"

#include <QFile>
#include <QFileInfo>

#include <new>

namespace {

constexpr qint64 pieceSize = 1 << 20; // bytes

// The reported size is only a hint: some files have none, others grow meanwhile.
std::string readAll(QFile &file)
{
    std::string bytes;
    bytes.reserve(size_t(file.size()) + 1); // one more to detect the end
    for (;;) {
        const size_t before = bytes.size();
        bytes.resize(before + size_t(qBound<qint64>(1, file.size() - file.pos(), pieceSize)));
        const qint64 got = file.read(&bytes[before], qint64(bytes.size() - before));
        bytes.resize(before + size_t(qMax<qint64>(0, got)));
        if (got <= 0)
            return bytes;
    }
}

} // namespace

std::optional<std::string> PropertiesFile::read(const QString &path)
{
    QFile file(path);
    if (!openShared(file))
        return std::nullopt;
    try {
        std::string bytes = readAll(file);
        if (file.error() == QFileDevice::NoError)
            return bytes;
        qCWarning(settingsLog, "log config not readable: %s", qUtf8Printable(file.errorString()));
    } catch (const std::bad_alloc &) {
        qCWarning(settingsLog, "log config too large for memory: %lld bytes", file.size());
    }
    return std::nullopt;
}

bool PropertiesFile::isWritable(const QString &path)
{
    return QFile(path).open(QIODevice::ReadWrite | QIODevice::ExistingOnly);
}

bool PropertiesFile::overwrite(const QString &path, std::string_view bytes)
{
    const auto size = qint64(bytes.size());
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered))
        return false;
    const bool written = file.write(bytes.data(), size) == size && file.resize(size);
    file.close();
    return written && file.error() == QFileDevice::NoError;
}

PropertiesFile::Stamp PropertiesFile::stamp(const QString &path)
{
    const QFileInfo file(path);
    return {file.size(), file.lastModified()};
}

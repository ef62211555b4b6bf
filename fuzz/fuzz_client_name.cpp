// The client's name in its icon path, compared with a straightforward implementation. The first
// byte of an input selects the separators and the encoding of the rest.
#include "DisplayLanguage.h"
#include "Fuzz.h"

#include <cstring>
#include <string>

namespace {

QString textOf(const std::uint8_t *data, std::size_t size, bool asUtf16)
{
    if (!asUtf16)
        return QString::fromUtf8(reinterpret_cast<const char *>(data), int(size));
    // Arbitrary code units, including unpaired surrogates.
    QString text(int(size / 2), Qt::Uninitialized);
    if (!text.isEmpty())
        std::memcpy(text.data(), data, std::size_t(text.size()) * 2);
    return text;
}

/// The text between the last separator and the last ".exe".
QString plainName(const CameraClient &client)
{
    int separator = -1;
    for (const QChar c : client.pathSeparators)
        separator = std::max(separator, client.iconPath.lastIndexOf(c));
    const int ending = client.iconPath.lastIndexOf(QStringLiteral(".exe"));
    if (separator < 0 || ending <= separator)
        return {};
    const QString name = client.iconPath.mid(separator + 1, ending - separator - 1);
    return name.toUtf8().size() < 260 ? name : QString();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const bool eitherSlash = (data[0] & 1) != 0;
    const CameraClient client{textOf(data + 1, size - 1, (data[0] & 2) != 0),
                              eitherSlash ? QStringLiteral("\\/") : QStringLiteral("\\")};
    const QString name = clientNameFromIcon(client);
    demand(name == plainName(client), "the same name as by the rule said forwards");
    for (const QChar c : client.pathSeparators)
        demand(!name.contains(c), "no folder is part of the name");
    return 0;
}

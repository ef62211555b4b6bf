#include "PlainLevels.h"

#include <QList>

PlainLevels withPlainLevels(QByteArray bytes, int level)
{
    const QList<QByteArray> names{"INFO", "DEBUG", "FATAL"};
    const bool known = level >= 0 && level < names.size();
    const QByteArray root = known ? "log4cpp.rootCategory = " + names[level] : QByteArray();
    const QByteArray category =
        known ? "log4cpp.category.qzsdk = " + names[level] + ", a_qzsdk" : QByteArray();

    PlainLevels result;
    bool rootReplaced = false;
    bool categoryReplaced = false;
    const QList<QByteArray> lines = bytes.replace("\r\n", "\n").split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        const bool isRoot = lines[i].contains("log4cpp.rootCategory");
        const bool isCategory = !isRoot && lines[i].contains("log4cpp.category.qzsdk");
        result.bytes += isRoot ? root : isCategory ? category : lines[i];
        if (isRoot || isCategory || i + 1 < lines.size())
            result.bytes += '\n';
        rootReplaced = rootReplaced || isRoot;
        categoryReplaced = categoryReplaced || isCategory;
    }
    result.bothReplaced = rootReplaced && categoryReplaced;
    return result;
}

#pragma once

#include <QObject>
#include <QString>

/// The child of @p whole that has this class and object name; none ends the program.
template <typename T>
[[nodiscard]] T &part(const QObject &whole, const char *name)
{
    T *found = whole.findChild<T *>(QString::fromLatin1(name));
    if (found == nullptr)
        qFatal("%s has no %s", whole.metaObject()->className(), name);
    return *found;
}

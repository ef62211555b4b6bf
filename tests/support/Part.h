#pragma once

#include <QObject>
#include <QString>

/// The child of @p whole with this class and object name. Aborts the test if there is none.
template <typename T>
[[nodiscard]] T &part(const QObject &whole, const char *name)
{
    T *found = whole.findChild<T *>(QString::fromLatin1(name));
    if (found == nullptr)
        qFatal("%s has no %s", whole.metaObject()->className(), name);
    return *found;
}

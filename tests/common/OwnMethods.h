#pragma once

#include <QMetaMethod>
#include <QStringList>

/// The signatures that a class declares itself, in meta-object order.
struct OwnMethods
{
    QStringList signalsOf;
    QStringList slotsOf;
};

inline OwnMethods ownMethods(const QMetaObject &type)
{
    OwnMethods own;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        const QMetaMethod method = type.method(i);
        const QString signature = QString::fromLatin1(method.methodSignature());
        if (method.methodType() == QMetaMethod::Signal)
            own.signalsOf.append(signature);
        else if (method.methodType() == QMetaMethod::Slot)
            own.slotsOf.append(signature);
    }
    return own;
}

#pragma once

#include "ExportInfoDlg.h"

#include <QTimer>
#include <private/qobject_p.h>

/// The timer that hides @p notice: a member without a parent, which only its connection leads to.
inline QTimer &timerOf(ExportInfoDlg &notice)
{
    for (QObject *sender : QObjectPrivate::get(&notice)->senderList()) {
        if (auto *timer = qobject_cast<QTimer *>(sender))
            return *timer;
    }
    qFatal("no timer is connected to the notice");
}

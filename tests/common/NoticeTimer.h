#pragma once

#include "ExportInfoDlg.h"

#include <QTimer>
#include <private/qobject_p.h>

/// The timer that hides @p notice: a member without a parent, found through its connection.
inline QTimer &timerOf(ExportInfoDlg &notice)
{
    for (QObject *sender : QObjectPrivate::get(&notice)->senderList()) {
        if (auto *timer = qobject_cast<QTimer *>(sender))
            return *timer;
    }
    qFatal("no timer is connected to the notice");
}

#pragma once

#include "Faults.h"
#include "ScratchFolder.h"
#include "linux/LinuxSeams.h"

#include <QFile>

/// A script that replaces journalctl, in a scratch folder.
struct JournalScript
{
    explicit JournalScript(const QByteArray &body)
    {
        journal.program = scratch.file("journal", "#!/bin/sh\n" + body + '\n');
        QFile::setPermissions(journal.program, Everybody::mayDoAll);
    }

    bool exportAndWait(const QString &channel) { return exportJournal(channel, target(), journal); }
    [[nodiscard]] QString target() const { return scratch.path("events"); }

    ScratchFolder scratch;
    Journal journal;
};

#pragma once

#include <QFile>

/// Opens @p file, whose name is set, for unbuffered reading, in such a way that whoever writes the
/// file can go on writing, rename and delete it. Only regular files are opened: a folder, a pipe or
/// a device is refused at once, without waiting for anything. False: not opened. Any thread.
[[nodiscard]] bool openShared(QFile &file);

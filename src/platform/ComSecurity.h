#pragma once

#include <QtGlobal>

/// Initialises COM security for this process; later calls return the first result. Call it as soon
/// as the application object exists, because COM initialises its security implicitly at the first
/// use. A negative result means that WMI queries cannot be made. Returns 0 on systems without COM.
/// Any thread.
[[nodiscard]] qint32 setUpComSecurity();

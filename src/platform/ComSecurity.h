#pragma once

#include <QtGlobal>

/// Lets this process ask the system's management services, once for all its threads; later calls
/// give the first one's result. Call it once the application object exists: COM may settle its
/// security by itself as soon as anything uses it, and then refuses. Negative: refused, such queries
/// cannot be made. Systems without COM have nothing to set up and say 0. Any thread.
[[nodiscard]] qint32 setUpComSecurity();

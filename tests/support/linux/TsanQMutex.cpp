// Announces QMutex to ThreadSanitizer. Qt is not built with the sanitizer, which therefore sees
// neither the locks nor the order they create and would report every access to a guarded field.
// Linked only into tests of a thread-sanitized build: these functions replace QMutex's, call them,
// and inform the sanitizer.

#include <dlfcn.h>

#include <QtGlobal>

extern "C" {

void __tsan_acquire(void *address);
void __tsan_release(void *address);

// The mangled names of QMutex::lock(), QMutex::unlock() and QMutex::tryLock(int).
void _ZN6QMutex4lockEv(void *mutex);
void _ZN6QMutex6unlockEv(void *mutex);
bool _ZN6QMutex7tryLockEi(void *mutex, int timeout);

} // extern "C"

namespace {

template <typename Function>
Function original(const char *name)
{
    auto *function = reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
    if (function == nullptr)
        qFatal("Qt has no %s", name);
    return function;
}

} // namespace

void _ZN6QMutex4lockEv(void *mutex)
{
    static const auto lock = original<void (*)(void *)>("_ZN6QMutex4lockEv");
    lock(mutex);
    __tsan_acquire(mutex);
}

void _ZN6QMutex6unlockEv(void *mutex)
{
    static const auto unlock = original<void (*)(void *)>("_ZN6QMutex6unlockEv");
    __tsan_release(mutex);
    unlock(mutex);
}

bool _ZN6QMutex7tryLockEi(void *mutex, int timeout)
{
    static const auto tryLock = original<bool (*)(void *, int)>("_ZN6QMutex7tryLockEi");
    const bool locked = tryLock(mutex, timeout);
    if (locked)
        __tsan_acquire(mutex);
    return locked;
}

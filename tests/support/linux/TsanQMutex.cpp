// Teaches ThreadSanitizer what QMutex does. Qt's libraries are not built with the sanitizer, so it
// sees neither the locking nor the order that it makes, and would report every use of a guarded
// field. Linked into the tests of a thread-sanitized build only: these take the place of QMutex's
// functions, call them, and tell the sanitizer.

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

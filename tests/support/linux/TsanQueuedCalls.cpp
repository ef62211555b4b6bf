// Teaches ThreadSanitizer that an event which another thread has posted is handed over whole. Qt's
// libraries are not built with the sanitizer, so it sees neither the lock of the event queue nor
// the order that it makes, and would report each queued call that the main thread takes from the
// queue without having slept. Linked into the tests of a thread-sanitized build only.
//
// What the sending thread did before it made the event comes before what the main thread does with
// it: that much is true, and no more is said here. An event is known by its address; hence the
// operator new of its own, which speaks for each object that is made.

#include <cstdlib>
#include <new>

#include <QCoreApplication>
#include <QEvent>

extern "C" {

void __tsan_acquire(void *address);
void __tsan_release(void *address);

} // extern "C"

void *operator new(std::size_t size)
{
    void *memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr)
        throw std::bad_alloc();
    __tsan_release(memory);
    return memory;
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

class TakenEvents : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *, QEvent *event) override
    {
        __tsan_acquire(event);
        return false;
    }
};

void watchTakenEvents()
{
    QCoreApplication *application = QCoreApplication::instance();
    application->installEventFilter(new TakenEvents(application));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watchTakenEvents)

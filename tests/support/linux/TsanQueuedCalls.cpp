// Announces Qt's event queue to ThreadSanitizer. Qt is not built with the sanitizer, which
// therefore does not see the queue's lock and would report each queued call that the main thread
// takes without having slept. Linked only into tests of a thread-sanitized build.
//
// Declares that everything the sending thread did before it created an event happens before the
// main thread handles it, and nothing more. Events are identified by address, hence an operator new
// that announces every allocation.

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

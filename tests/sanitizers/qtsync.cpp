// Tells thread sanitizer how Qt orders the threads: its mutexes and its event queue lie in libraries that
// come without instrumentation, so what a mutex guards, or what a thread did before its signal arrived, would
// look like a race. The functions here come before the libraries' own, call those and report what they did.

#include <QEvent>
#include <QMutex>
#include <QObject>
#include <QThread>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace {

template<typename Function>
Function qtFunction(const char *symbol)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, symbol));
}

char eventQueue; // stands for the queues of all threads

} // namespace

void QMutex::lock()
{
    static const auto qtLock = qtFunction<void (*)(QMutex *)>("_ZN6QMutex4lockEv");
    qtLock(this);
    __tsan_acquire(this);
}

bool QMutex::tryLock(int timeout)
{
    static const auto qtTryLock = qtFunction<bool (*)(QMutex *, int)>("_ZN6QMutex7tryLockEi");
    const bool locked = qtTryLock(this, timeout);
    if (locked)
        __tsan_acquire(this);
    return locked;
}

void QMutex::unlock()
{
    static const auto qtUnlock = qtFunction<void (*)(QMutex *)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    qtUnlock(this);
}

// Signals of a worker thread, whose object lives on the thread that made it: here they leave, and as queued
// calls they arrive through event(). Who waits for the end of the thread need not see the last of them.
void QMetaObject::activate(QObject *sender, const QMetaObject *metaObject, int signal, void **arguments)
{
    using Activate = void (*)(QObject *, const QMetaObject *, int, void **);
    static const auto qtActivate = qtFunction<Activate>("_ZN11QMetaObject8activateEP7QObjectPKS_iPPv");
    const bool leavesThread = sender->thread() != QThread::currentThread();
    if (leavesThread)
        __tsan_release(&eventQueue);
    qtActivate(sender, metaObject, signal, arguments);
    // The copies of the arguments have been made by now. Where they arrive before this line, their making is
    // so recent that the sanitizer can name it, and the suppression of it holds.
    if (leavesThread)
        __tsan_release(&eventQueue);
}

bool QObject::event(QEvent *event)
{
    static const auto qtEvent = qtFunction<bool (*)(QObject *, QEvent *)>("_ZN7QObject5eventEP6QEvent");
    if (event->type() == QEvent::MetaCall)
        __tsan_acquire(&eventQueue);
    return qtEvent(this, event);
}

bool QThread::wait(QDeadlineTimer deadline)
{
    using Wait = bool (*)(QThread *, QDeadlineTimer);
    static const auto qtWait = qtFunction<Wait>("_ZN7QThread4waitE14QDeadlineTimer");
    const bool ended = qtWait(this, deadline);
    if (ended)
        __tsan_acquire(&eventQueue);
    return ended;
}

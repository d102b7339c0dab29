// Tells thread sanitizer about QMutex: its lock and unlock lie in Qt's library, which comes without
// instrumentation, so everything that a mutex guards would look like a race. The functions here come before
// the library's own, call those and report what they did.

#include <QMutex>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace {

template<typename Result, typename... Arguments>
Result callQt(const char *symbol, QMutex *mutex, Arguments... arguments)
{
    const auto function = reinterpret_cast<Result (*)(QMutex *, Arguments...)>(dlsym(RTLD_NEXT, symbol));
    return function(mutex, arguments...);
}

} // namespace

void QMutex::lock()
{
    callQt<void>("_ZN6QMutex4lockEv", this);
    __tsan_acquire(this);
}

bool QMutex::tryLock(int timeout)
{
    const bool locked = callQt<bool>("_ZN6QMutex7tryLockEi", this, timeout);
    if (locked)
        __tsan_acquire(this);
    return locked;
}

void QMutex::unlock()
{
    __tsan_release(this);
    callQt<void>("_ZN6QMutex6unlockEv", this);
}

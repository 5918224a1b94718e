// Replaces the pthread lock entry points of the test binary with counting ones that forward to
// the C library's own, so that a test can prove that a stretch of code takes no lock.
#include "tests/support/LockCounter.h"

#include <pthread.h>

namespace {

thread_local long locks = 0;

}  // namespace

#if !defined(__SANITIZE_THREAD__)
#include <atomic>

#include <dlfcn.h>

namespace {

// The next definition after this binary's: the C library's, or a sanitizer's wrapper of it.
// Looked up at the first call, without the guard of a local static (which could lock).
template <typename Function>
Function Next(std::atomic<Function>& cache, const char* name)
{
    Function function = cache.load(std::memory_order_acquire);
    if (function == nullptr) {
        function = reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
        cache.store(function, std::memory_order_release);
    }
    return function;
}

using MutexFunction = int (*)(pthread_mutex_t*);
std::atomic<MutexFunction> mutexLock{nullptr}, mutexTrylock{nullptr};

}  // namespace

extern "C" {

int pthread_mutex_lock(pthread_mutex_t* mutex)
{
    ++locks;
    return Next(mutexLock, "pthread_mutex_lock")(mutex);
}

int pthread_mutex_trylock(pthread_mutex_t* mutex)
{
    ++locks;
    return Next(mutexTrylock, "pthread_mutex_trylock")(mutex);
}
}
#endif

namespace OV::Testing {

LockCounter::LockCounter() : start(locks) {}

long LockCounter::Count() const
{
    return locks - start;
}

bool LockCounter::IsAvailable()
{
#if defined(__SANITIZE_THREAD__)
    return false;
#else
    return true;
#endif
}

}  // namespace OV::Testing

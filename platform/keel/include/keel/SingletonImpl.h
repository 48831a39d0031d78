#pragma once

#include <atomic>
#include <memory>

#include <boost/thread/lock_guard.hpp>
#include <boost/thread/mutex.hpp>

#include "keel/Singleton.h"

namespace Keel {

/// What happens to the instance at process exit. Specialise it, before the instantiation, for a `T` that must stay
/// usable to the very end.
template <class T>
struct SingletonEnd {
    void operator()(T* instance) const { delete instance; }
};

template <class T>
T& CSingleton<T>::Instance()
{
    // Constant-initialised: once the instance exists, a call is one load and takes no lock.
    static std::atomic<T*> s_ready{nullptr};
    if (T* const ready = s_ready.load(std::memory_order_acquire)) {
        return *ready;
    }
    static boost::mutex mutex;
    static std::unique_ptr<T, SingletonEnd<T>> s_instance;
    const boost::lock_guard<boost::mutex> lock(mutex);
    if (!s_instance) {
        s_instance.reset(new T);
        s_ready.store(s_instance.get(), std::memory_order_release);
    }
    return *s_instance;
}

} // namespace Keel

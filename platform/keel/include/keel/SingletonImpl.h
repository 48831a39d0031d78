#pragma once

#include <memory>

#include <boost/thread/lock_guard.hpp>
#include <boost/thread/mutex.hpp>

#include "keel/Singleton.h"

namespace Keel {

template <class T>
T& CSingleton<T>::Instance()
{
    static boost::mutex mutex;
    static std::unique_ptr<T> s_instance;
    const boost::lock_guard<boost::mutex> lock(mutex);
    if (!s_instance) {
        s_instance.reset(new T);
    }
    return *s_instance;
}

} // namespace Keel

#pragma once

namespace Keel {

/// One process-wide instance of `T`, created under a lock on first use and destroyed at process exit. Later calls take
/// no lock.
///
/// The library that owns `T` defines the instance by including `keel/SingletonImpl.h` in one source file and
/// instantiating `template class Keel::CSingleton<T>;` there, so that every module of the process shares it.
template <class T>
class CSingleton {
public:
    CSingleton() {}
    ~CSingleton() {}

    /// The instance. Safe from any thread.
    static T& Instance();
};

} // namespace Keel

#pragma once

#include <memory>

#include <keel/Singleton.h>

#include "nexwire/Export.h"

namespace nexwire {

/// The host's manager of local devices. The library only keeps it; its operations are the host's own, in a class
/// derived from this one.
class NEXWIRE_API ILocalDeviceManager {
public:
    virtual ~ILocalDeviceManager();
};

/// The host's manager of local devices' states; kept like the other one.
class NEXWIRE_API ILocalDeviceStatusManager {
public:
    virtual ~ILocalDeviceStatusManager();
};

/// Registry of the two managers, for code that has no other way to reach them. Usable at any time and from any
/// thread, whether or not the library is initialised. Get it with `Keel::CSingleton<CIInterfaceManger>::Instance()`.
class NEXWIRE_API CIInterfaceManger {
public:
    CIInterfaceManger();
    ~CIInterfaceManger();
    CIInterfaceManger(const CIInterfaceManger&) = delete;
    CIInterfaceManger& operator=(const CIInterfaceManger&) = delete;

    /// Replaces the manager; an empty pointer clears it. Always true. Copies handed out earlier stay valid.
    bool RegisterLocalDeviceManager(const std::shared_ptr<ILocalDeviceManager>& manager);
    /// The registered manager, empty when there is none.
    std::shared_ptr<ILocalDeviceManager> GetLocalDeviceManager();

    /// As above, for the states of local devices.
    bool RegisterLocalDeviceStatusManager(const std::shared_ptr<ILocalDeviceStatusManager>& manager);
    std::shared_ptr<ILocalDeviceStatusManager> GetLocalDeviceStatusManager();

private:
    struct Slots;
    std::unique_ptr<Slots> slots_;
};

} // namespace nexwire

namespace Keel {
#if !(defined(_WIN32) && defined(NEXWIRE_BUILDING)) // As in keel/Log.h.
extern template class NEXWIRE_API CSingleton<nexwire::CIInterfaceManger>;
#endif
} // namespace Keel

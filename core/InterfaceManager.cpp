#include "nexwire/InterfaceManager.h"

#include <mutex>
#include <shared_mutex>

#include <boost/thread/shared_mutex.hpp>
#include <keel/SingletonImpl.h>

namespace nexwire {
namespace {

/// A shared pointer behind a reader/writer lock.
template <class T>
class Slot {
public:
    void Set(const std::shared_ptr<T>& value)
    {
        std::shared_ptr<T> previous = value;
        {
            const std::unique_lock<boost::shared_mutex> lock(mutex_);
            value_.swap(previous);
        }
        // The previous object goes after the lock: its destructor may well use the registry.
    }

    std::shared_ptr<T> Get()
    {
        const std::shared_lock<boost::shared_mutex> lock(mutex_);
        return value_;
    }

private:
    std::shared_ptr<T> value_;
    boost::shared_mutex mutex_;
};

} // namespace

struct CIInterfaceManger::Slots {
    Slot<ILocalDeviceManager> localDeviceManager;
    Slot<ILocalDeviceStatusManager> localDeviceStatusManager;
};

ILocalDeviceManager::~ILocalDeviceManager() = default;
ILocalDeviceStatusManager::~ILocalDeviceStatusManager() = default;

CIInterfaceManger::CIInterfaceManger() : slots_(new Slots) {}
CIInterfaceManger::~CIInterfaceManger() = default;

bool CIInterfaceManger::RegisterLocalDeviceManager(const std::shared_ptr<ILocalDeviceManager>& manager)
{
    slots_->localDeviceManager.Set(manager);
    return true;
}

std::shared_ptr<ILocalDeviceManager> CIInterfaceManger::GetLocalDeviceManager()
{
    return slots_->localDeviceManager.Get();
}

bool CIInterfaceManger::RegisterLocalDeviceStatusManager(const std::shared_ptr<ILocalDeviceStatusManager>& manager)
{
    slots_->localDeviceStatusManager.Set(manager);
    return true;
}

std::shared_ptr<ILocalDeviceStatusManager> CIInterfaceManger::GetLocalDeviceStatusManager()
{
    return slots_->localDeviceStatusManager.Get();
}

} // namespace nexwire

namespace Keel {
#ifdef _WIN32
template class NEXWIRE_API CSingleton<nexwire::CIInterfaceManger>;
#else
template class CSingleton<nexwire::CIInterfaceManger>;
#endif
} // namespace Keel

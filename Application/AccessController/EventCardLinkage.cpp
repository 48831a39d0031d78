#include "nexwire/AccessController/EventCardLinkage.h"

#include "Application/PassThrough/PassThrough.h"
#include "core/Serialize.h"

namespace nexwire {

bool EventCardLinkage::requestGET(protocol::EventCardLinkageCfg& output, const std::string& deviceGuid, int linkageNo)
{
    return DeviceGet(Route::External, 2201, deviceGuid, output, std::to_string(linkageNo));
}

bool EventCardLinkage::requestSET(protocol::ReturnRst& result, const protocol::EventCardLinkageCfg& input,
                                  const std::string& deviceGuid, int linkageNo)
{
    const char* const function = NEXWIRE_FUNCTION;
    return core::Guard([&] {
        protocol::DagPassThroughRsp answer;
        if (!DeviceExchange(Route::External, 4201, deviceGuid, std::to_string(linkageNo), &input, answer)) {
            return false;
        }
        protocol::ReturnRst fresh;
        // A text that is not a result leaves it empty; running out of memory must not.
        if (!core::ReadText(fresh, fresh.RootName(), answer.statusBuffer, function)) {
            core::ReadText(fresh, fresh.RootName(), answer.outBuffer, function);
        }
        result = std::move(fresh);
        return true;
    });
}

bool EventCardLinkage::requestClear(const std::string& deviceGuid, int linkageNo)
{
    return DeviceCommand(Route::External, 4155, deviceGuid, std::to_string(linkageNo));
}

} // namespace nexwire

#include "nexwire/AccessController/EventCardLinkage.h"

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {

bool EventCardLinkage::requestGET(protocol::EventCardLinkageCfg& output, const std::string& deviceGuid, int linkageNo)
{
    return DeviceGet(Route::External, 2201, deviceGuid, output, std::to_string(linkageNo));
}

bool EventCardLinkage::requestSET(protocol::ReturnRst& result, const protocol::EventCardLinkageCfg& input,
                                  const std::string& deviceGuid, int linkageNo)
{
    return core::Guard([&] {
        protocol::DagPassThroughRsp answer;
        if (!DeviceExchange(Route::External, 4201, deviceGuid, std::to_string(linkageNo), &input, answer)) {
            return false;
        }
        protocol::ReturnRst fresh;
        if (!protocol::TParseJSONStr(fresh, answer.statusBuffer)) {
            protocol::TParseJSONStr(fresh, answer.outBuffer);
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

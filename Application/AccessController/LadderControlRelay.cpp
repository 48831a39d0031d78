#include "nexwire/AccessController/LadderControlRelay.h"

#include "Application/PassThrough/PassThrough.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/accessController/ladderControlRelayFromDB";

} // namespace

bool LadderControlRelay::getLadderControlRelayCfg(protocol::LadderControlRelay& output, const std::string& deviceGuid,
                                                  int relayNo)
{
    return DeviceGet(Route::External, 2214, deviceGuid, output, std::to_string(relayNo));
}

bool LadderControlRelay::setLadderControlRelayCfg(const protocol::LadderControlRelay& input,
                                                  const std::string& deviceGuid, int relayNo)
{
    return DeviceSet(Route::External, 4251, deviceGuid, input, std::to_string(relayNo));
}

bool LadderControlRelaySession::getAllLadderControlRelays(const protocol::LadderControlRelayReq& condition,
                                                          protocol::LadderControlRelaydQueryResultListData& result)
{
    return Exchange(Query(kRoot, condition), result);
}

bool LadderControlRelaySession::addLadderControlRelays(const protocol::AddLadderControlRelayReq& param,
                                                       protocol::AddLadderControlRelayResultRspData& result)
{
    return Exchange(Write(kRoot, param), result);
}

bool LadderControlRelaySession::deleteLadderControlRelays(const protocol::LadderControlRelayReq& param)
{
    return Exchange(Remove(kRoot, param));
}

bool LadderControlRelaySession::modifyLadderControlRelays(const protocol::ModifyladderControlRelayReq& param,
                                                          std::string& output)
{
    protocol::ModifyladderControlRelayResultData changed;
    if (!Exchange(Write(Path(kRoot, "/", param.guid), param), changed)) {
        return false;
    }
    output = std::move(changed.modifyladderControlRelayResult.guid);
    return true;
}

} // namespace nexwire

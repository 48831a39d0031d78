#include "protocol/AccessController/LadderControlRelay.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(LadderControlRelay, "ladderControlRelay", F(relayNo), F(moduleNo), F(enable), F(relayType), F(floorNo), F(floorName), F(openDuration), F(openDelay))
NEXWIRE_INBOUND_FIELDS(LadderControlRelayAdd, "ladderControlRelayAdd", F(deviceGuid), F(name), F(ladderControlRelay))
NEXWIRE_INBOUND_FIELDS(AddLadderControlRelayReq, "addLadderControlRelayReq", F(addladderControlRelayList))
NEXWIRE_RETURN_FIELDS(AddLadderControlRelayResult, F(guid), F(deviceGuid), F(relayNo), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(AddLadderControlRelayResultRsp, F(addLadderControlRelayResultList))
NEXWIRE_RETURN_FIELDS(AddLadderControlRelayResultRspData, F(addLadderControlRelayResultRsp))
NEXWIRE_INBOUND_FIELDS(LadderControlRelayReq, "ladderControlRelayReq", F(guidList), F(deviceGuidList))
NEXWIRE_RETURN_FIELDS(LadderControlRelaydQueryResult, F(guid), F(deviceGuid), F(deviceName), F(name), F(ladderControlRelay), F(modifyTime))
NEXWIRE_RETURN_FIELDS(LadderControlRelaydQueryResultListData, F(ladderControlRelaydQueryResultList))
NEXWIRE_INBOUND_FIELDS(ModifyladderControlRelayReq, "modifyladderControlRelayReq", F(guid), F(name), F(ladderControlRelay))
NEXWIRE_RETURN_FIELDS(ModifyladderControlRelayResult, F(guid), F(name))
NEXWIRE_RETURN_FIELDS(ModifyladderControlRelayResultData, F(modifyladderControlRelayResult))
// clang-format on

} // namespace protocol

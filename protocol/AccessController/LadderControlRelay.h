#pragma once

#include "protocol/Common.h"

// Relays by which a lift is released to a floor.

namespace protocol {

/// A relay as its lift controller has it set.
struct NEXWIRE_API LadderControlRelay : IInboundData {
    std::int32_t relayNo = 0;  ///< From 1, over all modules of the controller.
    std::int32_t moduleNo = 0; ///< Distributed module it sits on, 0 for the controller itself.
    bool enable = false;
    std::string relayType;    ///< One of: "floorButton" releases a button, "callLift" calls the lift, "auto" presses a
                              ///< button.
    std::int32_t floorNo = 0; ///< Below ground negative; 0 for none.
    std::string floorName;    ///< As the lift shows it, at most 32 bytes.
    std::int32_t openDuration = 5; ///< How long the relay stays closed, seconds, 1 to 255.
    std::int32_t openDelay = 0;    ///< Before it closes, seconds, 0 to 255.
    NEXWIRE_JSON
};

/// A relay to keep on the platform.
struct NEXWIRE_API LadderControlRelayAdd : IInboundData {
    std::string deviceGuid; ///< Lift controller.
    std::string name;
    LadderControlRelay ladderControlRelay;
    NEXWIRE_JSON
};

struct NEXWIRE_API AddLadderControlRelayReq : IInboundData {
    std::vector<LadderControlRelayAdd> addladderControlRelayList; ///< Small l in "ladder", so on the wire.
    NEXWIRE_JSON
};

/// What became of one relay.
struct NEXWIRE_API AddLadderControlRelayResult : IReturnData {
    std::string guid; ///< Of the new relay; empty when it was refused.
    std::string deviceGuid;
    std::int32_t relayNo = 0;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API AddLadderControlRelayResultRsp : IReturnData {
    std::vector<AddLadderControlRelayResult> addLadderControlRelayResultList;
    NEXWIRE_JSON
};

struct NEXWIRE_API AddLadderControlRelayResultRspData : IReturnData {
    AddLadderControlRelayResultRsp addLadderControlRelayResultRsp;
    NEXWIRE_JSON
};

/// Which relays are meant, by themselves and by their controllers. With both lists empty a query means all, a
/// deletion none.
struct NEXWIRE_API LadderControlRelayReq : IInboundData {
    std::vector<std::string> guidList;       ///< Relays.
    std::vector<std::string> deviceGuidList; ///< Lift controllers.
    NEXWIRE_JSON
};

/// A relay as the platform keeps it.
struct NEXWIRE_API LadderControlRelaydQueryResult : IReturnData {
    std::string guid;
    std::string deviceGuid;
    std::string deviceName;
    std::string name;
    LadderControlRelay ladderControlRelay;
    std::int64_t modifyTime = 0; ///< Last change, milliseconds since 1970-01-01 UTC.
    NEXWIRE_JSON
};

struct NEXWIRE_API LadderControlRelaydQueryResultListData : IReturnData {
    std::vector<LadderControlRelaydQueryResult> ladderControlRelaydQueryResultList; ///< "Relayd" on the wire.
    NEXWIRE_JSON
};

/// A relay as it is to be.
struct NEXWIRE_API ModifyladderControlRelayReq : IInboundData {
    std::string guid; ///< The relay; stands in the path too.
    std::string name;
    LadderControlRelay ladderControlRelay;
    NEXWIRE_JSON
};

struct NEXWIRE_API ModifyladderControlRelayResult : IReturnData {
    std::string guid;
    std::string name;
    NEXWIRE_JSON
};

struct NEXWIRE_API ModifyladderControlRelayResultData : IReturnData {
    ModifyladderControlRelayResult modifyladderControlRelayResult;
    NEXWIRE_JSON
};

} // namespace protocol

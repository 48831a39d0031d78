#pragma once

#include "protocol/AccessController/LadderControlRelay.h"

namespace nexwire {

/// Relays of a lift controller, on the device itself.
class NEXWIRE_API LadderControlRelay {
public:
    /// True when the device answered with a relay; `output` is untouched otherwise. @param relayNo  from 1.
    static bool getLadderControlRelayCfg(protocol::LadderControlRelay& output, const std::string& deviceGuid,
                                         int relayNo);
    /// True when the platform's answer was readable, whatever the device makes of it. @param relayNo  from 1.
    static bool setLadderControlRelayCfg(const protocol::LadderControlRelay& input, const std::string& deviceGuid,
                                         int relayNo);
};

/// Relays of lift controllers, as the platform keeps them.
///
/// All functions of this file block until the answer is there and may be called from any thread. They return true when
/// the answer was a readable envelope, whatever its code; a result is untouched on false.
class NEXWIRE_API LadderControlRelaySession {
public:
    static bool getAllLadderControlRelays(const protocol::LadderControlRelayReq& condition,
                                          protocol::LadderControlRelaydQueryResultListData& result);
    /// One result per relay.
    static bool addLadderControlRelays(const protocol::AddLadderControlRelayReq& param,
                                       protocol::AddLadderControlRelayResultRspData& result);
    static bool deleteLadderControlRelays(const protocol::LadderControlRelayReq& param);
    /// Replaces the relay that `param.guid` names. @param output  receives the GUID of the changed relay as the
    /// server gives it, empty when it gives none.
    static bool modifyLadderControlRelays(const protocol::ModifyladderControlRelayReq& param, std::string& output);
};

} // namespace nexwire

#pragma once

#include "protocol/AccessController/FirstPerson.h"

namespace nexwire {

/// Who counts as the first person of the day at a door.
///
/// All functions block until the answer is there and may be called from any thread. They return true when the answer
/// was a readable envelope, whatever its code; a result is untouched on false.
class NEXWIRE_API FirstPersonOpenDoor {
public:
    /// One result per entry, with the entry's GUID.
    static bool addDatas(const protocol::FirstPersonAddParam& param, protocol::FirstPersonAddReturnListData& result);
    /// One result per entry.
    static bool deleteDatas(const protocol::FirstPersonRemoveList& param,
                            protocol::FirstPersonRemoveResultListData& result);
    /// The entries of a door. @param guid  the door's.
    static bool queryDatas(const std::string& guid, const protocol::FirstPersonCondition& condition,
                           protocol::FirstPersonQueryResultRspData& result);
};

} // namespace nexwire

#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// What became of one item of a request that names several.
struct NEXWIRE_API OperationResult : IReturnData {
    std::string guid;            ///< The item.
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API OperationResultListData : IReturnData {
    std::vector<OperationResult> operationResultList;
    NEXWIRE_JSON
};

} // namespace protocol

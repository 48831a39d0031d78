#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// Where one part of the output lies in a Wiegand frame.
struct NEXWIRE_API WiegandOutRule : IInboundData {
    std::int32_t ruleType = 0; ///< Part of the frame. One of: 0 card number, 1 site code, 2 manufacturer code, 3 OEM
                               ///< code.
    std::int32_t beginBit = 0; ///< First bit, from 0.
    std::int32_t length = 0;   ///< Bits.
    NEXWIRE_JSON
};

/// A Wiegand format as it is set. Bit positions count from 0 at the start of the frame, lengths are bits.
struct NEXWIRE_API WiegandModifyParam : IInboundData {
    std::string guid;
    std::string name;
    bool enabled = false;
    std::int32_t totalLength = 0; ///< Whole frame, bits.
    std::int32_t checkType = 0;   ///< Check method; server vocabulary, carried as it is.
    std::int32_t oddBeginBit = 0; ///< Odd parity range.
    std::int32_t oddLength = 0;
    std::int32_t evenBeginBit = 0; ///< Even parity range.
    std::int32_t evenLength = 0;
    std::int32_t xorBeginBit = 0; ///< XOR check range, in groups of xorPerLength bits.
    std::int32_t xorPerLength = 0;
    std::int32_t xorTotalLength = 0;
    std::vector<std::string> deviceGuidList; ///< Devices that use the format.
    std::vector<WiegandOutRule> outRuleList; ///< What the frame carries where.
    NEXWIRE_JSON
};

/// A Wiegand format as the platform keeps it; members as in `WiegandModifyParam`.
struct NEXWIRE_API WiegandQueryResult : IReturnData {
    std::string guid;
    std::string name;
    bool enabled = false;
    std::int32_t totalLength = 0;
    std::int32_t checkType = 0;
    std::int32_t oddBeginBit = 0;
    std::int32_t oddLength = 0;
    std::int32_t evenBeginBit = 0;
    std::int32_t evenLength = 0;
    std::int32_t xorBeginBit = 0;
    std::int32_t xorPerLength = 0;
    std::int32_t xorTotalLength = 0;
    std::vector<std::string> deviceGuidList;
    std::vector<WiegandOutRule> outRuleList;
    NEXWIRE_JSON
};

struct NEXWIRE_API WiegandQueryResultListData : IReturnData {
    std::vector<WiegandQueryResult> wiegandQueryResultList;
    NEXWIRE_JSON
};

} // namespace protocol

#include "protocol/AccessController/Wiegand.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(WiegandOutRule, "wiegandOutRule", F(ruleType), F(beginBit), F(length))
NEXWIRE_INBOUND_FIELDS(WiegandModifyParam, "wiegandModifyParam", F(guid), F(name), F(enabled), F(totalLength), F(checkType), F(oddBeginBit), F(oddLength), F(evenBeginBit), F(evenLength), F(xorBeginBit), F(xorPerLength), F(xorTotalLength), F(deviceGuidList), F(outRuleList))
NEXWIRE_RETURN_FIELDS(WiegandQueryResult, F(guid), F(name), F(enabled), F(totalLength), F(checkType), F(oddBeginBit), F(oddLength), F(evenBeginBit), F(evenLength), F(xorBeginBit), F(xorPerLength), F(xorTotalLength), F(deviceGuidList), F(outRuleList))
NEXWIRE_RETURN_FIELDS(WiegandQueryResultListData, F(wiegandQueryResultList))
// clang-format on

} // namespace protocol

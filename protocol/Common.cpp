#include "protocol/Common.h"

#include "core/FieldTable.h"

namespace protocol {

NEXWIRE_RETURN_FIELDS(OperationResult, F(guid), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(OperationResultListData, F(operationResultList))

} // namespace protocol

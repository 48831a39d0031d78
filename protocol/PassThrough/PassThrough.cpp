#include "protocol/PassThrough/PassThrough.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(DagPassThroughReq, "dagPassThroughReq", F(command), F(condBuffer), F(inBuffer))
NEXWIRE_RETURN_FIELDS(DagPassThroughRsp, F(outBuffer), F(statusBuffer))
NEXWIRE_RETURN_FIELDS(DagPassThroughRspData, F(dagPassThroughRsp))
NEXWIRE_INBOUND_FIELDS(BatchSendData, "batchSendData", F(id), F(inBuffer), F(inBufferEncoding))
NEXWIRE_INBOUND_FIELDS(BatchPassThroughReq, "batchPassThroughReq", F(guid), F(flagGuid), F(cancel), F(getPreviousData), F(command), F(hasNext), F(condBuffer), F(condBufferEncoding), F(maxResultNum), F(batchSendDataList))
NEXWIRE_RETURN_FIELDS(BatchReturnData, F(id), F(code), F(outBuffer), F(outBufferEncoding), F(statusBuffer), F(statusBufferEncoding))
NEXWIRE_RETURN_FIELDS(BatchPassThroughRsp, F(guid), F(isFinish), F(batchReturnDataList))
NEXWIRE_RETURN_FIELDS(BatchPassThroughRspData, F(batchPassThroughRsp))
NEXWIRE_INBOUND_FIELDS(KestrelPassThroughReq, "kestrelPassThroughReq", F(url), F(inBuffer))
NEXWIRE_RETURN_FIELDS(KestrelPassThroughRsp, F(outBuffer), F(statusBuffer))
NEXWIRE_RETURN_FIELDS(KestrelPassThroughRspData, F(kestrelPassThroughRsp))
NEXWIRE_INBOUND_FIELDS(NetsdkPassThroughReq, "netsdkPassThroughReq", F(command), F(channelNo), F(condBuffer), F(inBuffer))
NEXWIRE_RETURN_FIELDS(NetsdkPassThroughRsp, F(errorCode), F(outBuffer), F(statusBuffer))
NEXWIRE_RETURN_FIELDS(NetsdkPassThroughRspData, F(netsdkPassThroughRsp))
NEXWIRE_INBOUND_FIELDS(CredCfgCond, "CredCfgCond", F(totalNum), F(enableCardReader))
// clang-format on

} // namespace protocol

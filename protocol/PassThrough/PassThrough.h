#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// One command for a device, relayed by the platform.
struct NEXWIRE_API DagPassThroughReq : IInboundData {
    std::int32_t command = 0; ///< What the device is to do; device vocabulary.
    std::string condBuffer;   ///< Condition, for example the number of a door; empty when there is none.
    std::string inBuffer;     ///< JSON text of the structure to set; empty for everything else.
    NEXWIRE_JSON
};

/// The device's answer to a command.
struct NEXWIRE_API DagPassThroughRsp : IReturnData {
    std::string outBuffer;    ///< JSON text of the structure asked for.
    std::string statusBuffer; ///< The device's status answer to a set.
    NEXWIRE_JSON
};

struct NEXWIRE_API DagPassThroughRspData : IReturnData {
    DagPassThroughRsp dagPassThroughRsp;
    NEXWIRE_JSON
};

/// One item of a batch on its way to the device.
struct NEXWIRE_API BatchSendData : IInboundData {
    std::string id; ///< The caller's, comes back with the item's result.
    std::string inBuffer;
    std::string inBufferEncoding; ///< How inBuffer is encoded; empty for plain text.
    NEXWIRE_JSON
};

/// One step of a batch command. A batch is a conversation under one `guid`: send items while there are more
/// (`hasNext`), then ask until the answer says `isFinish`.
struct NEXWIRE_API BatchPassThroughReq : IInboundData {
    std::string guid;             ///< The batch transfer; empty in the first step.
    std::string flagGuid;         ///< The caller's mark, carried as it is.
    bool cancel = false;          ///< Ends the batch.
    bool getPreviousData = false; ///< Asks for the last page again.
    std::int32_t command = 0;     ///< What the device is to do; device vocabulary.
    bool hasNext = false;         ///< More items follow in another step.
    std::string condBuffer;
    std::string condBufferEncoding; ///< How condBuffer is encoded; empty for plain text.
    std::int32_t maxResultNum = 0;  ///< Most results per answer; 0 leaves it to the server.
    std::vector<BatchSendData> batchSendDataList;
    NEXWIRE_JSON
};

/// The device's answer to one item.
struct NEXWIRE_API BatchReturnData : IReturnData {
    std::string id;        ///< Of the item it answers.
    std::int32_t code = 0; ///< 0 done, otherwise the item's error number.
    std::string outBuffer;
    std::string outBufferEncoding;
    std::string statusBuffer;
    std::string statusBufferEncoding;
    NEXWIRE_JSON
};

/// One page of answers.
struct NEXWIRE_API BatchPassThroughRsp : IReturnData {
    std::string guid;      ///< The batch transfer, for the next step.
    bool isFinish = false; ///< No more pages.
    std::vector<BatchReturnData> batchReturnDataList;
    NEXWIRE_JSON
};

struct NEXWIRE_API BatchPassThroughRspData : IReturnData {
    BatchPassThroughRsp batchPassThroughRsp;
    NEXWIRE_JSON
};

/// A request for a device's HTTP interface, relayed by the platform.
struct NEXWIRE_API KestrelPassThroughReq : IInboundData {
    std::string url;      ///< Request line, as "GET /KESTREL/Publish/capabilities\r\n"; read by the device.
    std::string inBuffer; ///< Body for the device, XML or JSON; empty when there is none.
    NEXWIRE_JSON
};

/// What a device's HTTP interface answers.
struct NEXWIRE_API KestrelPassThroughRsp : IReturnData {
    std::string outBuffer;    ///< The document asked for, XML or JSON.
    std::string statusBuffer; ///< The device's status document; filled by a refusal and by what changes something.
    NEXWIRE_JSON
};

struct NEXWIRE_API KestrelPassThroughRspData : IReturnData {
    KestrelPassThroughRsp kestrelPassThroughRsp;
    NEXWIRE_JSON
};

/// A command for a device's own programming interface, relayed by the platform.
struct NEXWIRE_API NetsdkPassThroughReq : IInboundData {
    std::int32_t command = 0;   ///< What the device is to do; device vocabulary.
    std::int32_t channelNo = 0; ///< Channel of the device, from 1; 0 the device itself.
    std::string condBuffer;     ///< Condition; empty when there is none.
    std::string inBuffer;       ///< What to set; empty for everything else.
    NEXWIRE_JSON
};

/// The device's answer to such a command.
struct NEXWIRE_API NetsdkPassThroughRsp : IReturnData {
    std::int32_t errorCode = 0; ///< The device's own error number; 0 done.
    std::string outBuffer;      ///< What was asked for.
    std::string statusBuffer;   ///< Status of each part of what was set.
    NEXWIRE_JSON
};

struct NEXWIRE_API NetsdkPassThroughRspData : IReturnData {
    NetsdkPassThroughRsp netsdkPassThroughRsp;
    NEXWIRE_JSON
};

/// Condition for batches over credentials; goes into the condition text.
struct NEXWIRE_API CredCfgCond : IInboundData {
    std::int32_t totalNum = 0; ///< Items that will follow.
    bool enableCardReader = false;
    NEXWIRE_JSON
};

} // namespace protocol

#pragma once

#include <string>

#include "nexwire/ParseJSONUtil.h"
#include "protocol/PassThrough/PassThrough.h"
#include "support/StubExecutor.h"

namespace test {

/// One item of a page: a device's text and its code.
struct Item {
    std::string text;
    std::int32_t code = 0;
    std::string status = "";
};

/// An answer of the batch channel.
inline std::string Page(const std::string& guid, bool finished, const std::vector<Item>& items)
{
    protocol::BatchPassThroughRspData data;
    data.batchPassThroughRsp.guid = guid;
    data.batchPassThroughRsp.isFinish = finished;
    for (const Item& item : items) {
        protocol::BatchReturnData& answer = data.batchPassThroughRsp.batchReturnDataList.emplace_back();
        answer.code = item.code;
        answer.outBuffer = item.text;
        answer.statusBuffer = item.status;
    }
    return R"({"code":"0-0","data":)" + protocol::StructureToJSON(data) + "}";
}

/// The caller's part of a conversation that pages: what it asks with, and what came back last.
struct Conversation {
    protocol::BatchPassThroughReq request;
    std::string guid = "before";
    bool finished = false;
    std::string error;
};

} // namespace test

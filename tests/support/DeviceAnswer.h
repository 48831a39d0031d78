#pragma once

#include <string>

#include "nexwire/ParseJSONUtil.h"
#include "protocol/PassThrough/PassThrough.h"

namespace test {

/// The platform's envelope around what a device answers.
inline std::string DeviceAnswer(const std::string& outBuffer, const std::string& statusBuffer = "")
{
    protocol::DagPassThroughRspData data;
    data.dagPassThroughRsp.outBuffer = outBuffer;
    data.dagPassThroughRsp.statusBuffer = statusBuffer;
    return R"({"code":"0-0","msg":"","data":)" + protocol::StructureToJSON(data) + "}";
}

} // namespace test

#pragma once

#include "nexwire/JSONStruct.h"

namespace sample {

using protocol::IInboundData;
using protocol::IReturnData;

struct Part : IInboundData {
    std::string id;
    std::int32_t number = 0;
    std::vector<std::string> tags;
    NEXWIRE_JSON
};

/// A structure with a member of every kind.
struct All : IInboundData {
    std::string text = "default";
    std::int32_t number = 7;
    std::int64_t large = 8;
    double real = 0.5;
    bool flag = true;
    Part part;
    std::vector<std::string> texts;
    std::vector<std::int32_t> numbers;
    std::vector<Part> parts;
    NEXWIRE_JSON
};

struct Empty : IInboundData {
    NEXWIRE_JSON
};

struct Result : IReturnData {
    std::string name = "before";
    std::vector<Part> parts;
    NEXWIRE_JSON
};

} // namespace sample

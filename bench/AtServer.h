#pragma once

#include <string>

#include "nexwire/Nexwire.h"
#include "nexwire/host/HttpRequestExecutor.h"

namespace bench {

/// The library, pointed at a server as long as it lives.
class AtServer {
public:
    explicit AtServer(const std::string& base)
    {
        nexwire::host::HttpExecutorOptions options;
        options.baseAddress = base;
        nexwire::NexwireInitParams params;
        params.executor = new nexwire::host::HttpRequestExecutor(options);
        nexwire::NexwireInit(params);
    }
    ~AtServer() { nexwire::NexwireUnInit(); }
    AtServer(const AtServer&) = delete;
    AtServer& operator=(const AtServer&) = delete;
};

} // namespace bench

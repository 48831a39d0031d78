#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "nexwire/Nexwire.h"
#include "nexwire/host/HttpRequestExecutor.h"
#include "simulator/Platform.h"

namespace test {

/// The library through the ready-made transport at a local platform of its own, whose clock stands unless a test moves
/// it.
class AtPlatform : public testing::Test {
protected:
    /// @param startMs  what the platform's clock says, milliseconds since 1970 in UTC.
    explicit AtPlatform(std::int64_t startMs, nexwire::simulator::Options options = {}) : now(startMs)
    {
        options.now = [this] { return now.load(); };
        platform = std::make_unique<nexwire::simulator::Platform>(options);
        std::string error;
        if (!platform->Start(error)) {
            throw std::runtime_error(error);
        }
        nexwire::host::HttpExecutorOptions transport;
        transport.baseAddress = "http://127.0.0.1:" + std::to_string(platform->Port());
        nexwire::NexwireInitParams params;
        params.executor = new Failing(transport, failIn);
        nexwire::NexwireInit(params);
    }
    ~AtPlatform() override { nexwire::NexwireUnInit(); }

    std::atomic<std::int64_t> now;
    std::atomic<int> failIn{0}; ///< The exchange that fails: 1 is the next one, 0 none.
    std::unique_ptr<nexwire::simulator::Platform> platform;

private:
    class Failing : public nexwire::IRequestExecutor {
    public:
        Failing(const nexwire::host::HttpExecutorOptions& options, std::atomic<int>& countdown)
            : inner_(options), countdown_(countdown)
        {
        }
        bool Execute(nexwire::RspInfos& response, const nexwire::RequestParams& request, int flag) override
        {
            return --countdown_ != 0 && inner_.Execute(response, request, flag);
        }

    private:
        nexwire::host::HttpRequestExecutor inner_;
        std::atomic<int>& countdown_;
    };
};

} // namespace test

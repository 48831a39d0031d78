// A test of a client: the platform runs in this process, fails when it is told to, and says what it was asked.

#include <iostream>
#include <string>

#include <nexwire/AccessController/AccessGroup.h>
#include <nexwire/LastExchange.h>
#include <nexwire/Nexwire.h>
#include <nexwire/host/HttpRequestExecutor.h>
#include <simulator/Platform.h>

namespace {

// The code under test: adds a group, and once more when the platform was busy.
bool AddGroup(const std::string& name)
{
    protocol::AccessGroupAddParam group;
    group.name = name;
    for (int attempt = 0; attempt < 2; ++attempt) {
        std::string guid;
        int code = 0;
        if (nexwire::CAccessGroupComm::addAccessGroup(group, guid, code)) {
            return true;
        }
    }
    return false;
}

} // namespace

int main()
{
    nexwire::simulator::Platform platform;
    std::string error;
    if (!platform.Start(error)) {
        std::cerr << error << '\n';
        return 1;
    }
    nexwire::host::HttpExecutorOptions options;
    options.baseAddress = "http://127.0.0.1:" + std::to_string(platform.Port());
    nexwire::NexwireInitParams params;
    params.executor = new nexwire::host::HttpRequestExecutor(options);
    nexwire::NexwireInit(params);

    platform.Workbench("PUT", "faults", R"([{"function": "AccessGroupComm::*", "fault": "status", "times": 1}])");
    platform.Workbench(
        "POST", "expectations",
        R"({"function": "AccessGroupComm::addAccessGroup", "times": 2, "body": {"name": "Night shift"}})");
    const bool added = AddGroup("Night shift");
    const std::string report = platform.Workbench("GET", "expectations").body;
    nexwire::NexwireUnInit();

    const bool met = report.find("{\"met\":true") == 0;
    std::cout << (added && met ? "passed" : "failed: " + report) << '\n';
    return added && met ? 0 : 1;
}

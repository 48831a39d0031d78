// Creates an access group on a platform and lists all groups: quickstart http://127.0.0.1:8080
#include <cstdio>

#include <keel/Error.h>
#include <nexwire/AccessGroup.h>
#include <nexwire/Nexwire.h>
#include <nexwire/host/HttpRequestExecutor.h>

namespace {

bool CreateAndList()
{
    protocol::AccessGroupAddParam group;
    group.name = "Night shift";
    group.secheduleGuid = "00000000000000000000000000000001";
    std::string guid;
    int code = 0;
    if (!nexwire::CAccessGroupComm::addAccessGroup(group, guid, code)) {
        return false;
    }
    std::printf("created %s\n", guid.c_str());

    protocol::AccessGroupQueryResponseListData groups;
    if (!nexwire::CAccessGroupComm::queryAccessGroups(groups)) {
        return false;
    }
    for (const auto& each : groups.accessGroupQueryResponseList) {
        std::printf("%s  %s\n", each.accessGroupGuid.c_str(), each.name.c_str());
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: quickstart <base address of the platform>\n");
        return 2;
    }
    nexwire::host::HttpExecutorOptions options;
    options.baseAddress = argv[1];

    nexwire::NexwireInitParams start;
    start.executor = new nexwire::host::HttpRequestExecutor(options); // The library's from here on.
    nexwire::NexwireInit(start);
    const bool done = CreateAndList();
    if (!done) {
        std::fprintf(stderr, "failed: %s\n", Keel::Error::GetLastErrorJson().c_str());
    }
    nexwire::NexwireUnInit();
    return done ? 0 : 1;
}

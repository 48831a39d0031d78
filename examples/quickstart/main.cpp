// Creates an access group and lists all groups: quickstart http://127.0.0.1:8080
#include <iostream>

#include <keel/Error.h>
#include <nexwire/AccessController/AccessGroup.h>
#include <nexwire/LastExchange.h>
#include <nexwire/Nexwire.h>
#include <nexwire/host/HttpRequestExecutor.h>

int main(int argc, char** argv)
{
    nexwire::host::HttpExecutorOptions options;
    options.baseAddress = argc > 1 ? argv[1] : "http://127.0.0.1:8080";
    nexwire::NexwireInitParams params;
    params.executor = new nexwire::host::HttpRequestExecutor(options); // The library owns it from here on.
    nexwire::NexwireInit(params);

    protocol::AccessGroupAddParam group;
    group.name = "Night shift";
    std::string guid;
    int code = 0;
    if (nexwire::CAccessGroupComm::addAccessGroup(group, guid, code)) {
        std::cout << "created " << guid << '\n';
    } else {
        const nexwire::ExchangeRecord& exchange = nexwire::LastExchange();
        std::cerr << (exchange.answered ? exchange.message : Keel::Error::GetLastError().text) << '\n';
    }
    protocol::AccessGroupQueryResponseListData groups;
    const bool read = nexwire::CAccessGroupComm::queryAccessGroups(groups);
    for (const protocol::AccessGroupQueryResponse& each : groups.accessGroupQueryResponseList) {
        std::cout << each.accessGroupGuid << "  " << each.name << '\n';
    }
    nexwire::NexwireUnInit();
    return read ? 0 : 1;
}

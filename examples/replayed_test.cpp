// A client's own test without any server: its answers come from exchanges that were recorded once.
// Shows ReplayExecutor for what the platform says, and FaultExecutor for what goes wrong on the way to it.
// 0: all checks hold; 1: one does not. The file comes from: nexwire call queryAccessGroups --record groups.jsonl ...

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <keel/Error.h>

#include "nexwire/AccessController/AccessGroup.h"
#include "nexwire/LastExchange.h"
#include "nexwire/Nexwire.h"
#include "nexwire/host/ExchangeRecorder.h"
#include "nexwire/host/MakeExecutor.h"

namespace {

namespace host = nexwire::host;

/// The client: a list on the screen that keeps what it shows when it cannot be refreshed.
struct GroupList {
    std::vector<std::string> names;
    std::string problem;

    void Refresh()
    {
        protocol::AccessGroupQueryResponseListData groups;
        const bool answered = nexwire::CAccessGroupComm::queryAccessGroups(groups);
        const nexwire::ExchangeRecord& exchange = nexwire::LastExchange();
        if (!answered || exchange.number != 0) {
            problem = !exchange.answered ? "the server is out of reach"
                      : exchange.parsed  ? exchange.message
                                         : "the server does not make sense";
            return;
        }
        problem.clear();
        names.clear();
        for (const protocol::AccessGroupQueryResponse& group : groups.accessGroupQueryResponseList) {
            names.push_back(group.name);
        }
    }
};

bool g_good = true;

void Check(bool holds, const std::string& what)
{
    std::cout << (holds ? "ok      " : "FAILED  ") << what << '\n';
    g_good = g_good && holds;
}

/// The library on the recorded answers, with faults on the way.
class Recorded {
public:
    Recorded(const std::string& file, const std::vector<host::FaultRule>& faults)
    {
        auto replay = std::make_unique<host::ReplayExecutor>(file, host::ReplayExecutor::WhenUsedUp::RepeatLast);
        Check(replay->Valid(), "the recorded exchanges can be read");
        host::ExecutorOptions parts;
        parts.faults = faults;
        nexwire::NexwireInitParams params;
        params.executor = host::MakeExecutor(std::move(replay), parts).release();
        nexwire::NexwireInit(params);
    }
    ~Recorded() { nexwire::NexwireUnInit(); }
    Recorded(const Recorded&) = delete;
    Recorded& operator=(const Recorded&) = delete;
};

void ShowsWhatThePlatformSays(const std::string& file)
{
    const Recorded platform(file, {});
    GroupList list;
    list.Refresh();
    Check(list.names == std::vector<std::string>{"Office staff"}, "the first answer has one group");
    list.Refresh();
    Check(list.names == std::vector<std::string>{"Office staff", "Night shift"}, "the second answer has two");
    Check(list.problem.empty(), "and there is no problem");
}

void KeepsWhatItShowsWhenSomethingIsWrong(const std::string& file)
{
    host::FaultRule lost;
    lost.times = 1;
    host::FaultRule torn;
    torn.times = 1;
    torn.fault = host::FaultRule::Fault::Torn;
    host::FaultRule refused;
    refused.fault = host::FaultRule::Fault::Answer;
    refused.body = R"({"code":"1-17","msg":"sign in first"})";
    const Recorded platform(file, {lost, torn, refused});
    GroupList list;
    list.names = {"shown before"};
    for (const char* problem : {"the server is out of reach", "the server does not make sense", "sign in first"}) {
        list.Refresh();
        Check(list.problem == problem, std::string("says: ") + problem);
        Check(list.names == std::vector<std::string>{"shown before"}, "and shows what it showed");
    }
}

} // namespace

int main(int argc, char** argv)
{
    const std::string file = argc > 1 ? argv[1] : "groups.jsonl";
    ShowsWhatThePlatformSays(file);
    KeepsWhatItShowsWhenSomethingIsWrong(file);
    return g_good ? 0 : 1;
}

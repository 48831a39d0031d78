// A retrying importer: brings persons from a file with lines of "number,name" into the register, in batches.
// Shows MakeExecutor with repetition, one CallScope around it all, and what to do about a write without an answer: it
// may have been carried out, so what is there is asked before anything is sent again. 0: all are there; 1: not.

#include <fstream>
#include <iostream>
#include <map>
#include <string>

#include <keel/Error.h>

#include "nexwire/LastExchange.h"
#include "nexwire/Nexwire.h"
#include "nexwire/Personnel/Person.h"
#include "nexwire/host/MakeExecutor.h"
#include "nexwire/host/Pages.h"

namespace {

namespace host = nexwire::host;
namespace personnel = protocol::personnelcommon;

constexpr std::size_t kBatch = 10;

using People = std::map<std::string, std::string>; ///< Name by number.

People ReadList(const std::string& path)
{
    People people;
    std::ifstream file(path);
    std::string line;
    for (std::getline(file, line); std::getline(file, line);) { // The first line names the columns.
        const std::size_t comma = line.find(',');
        if (comma != std::string::npos) {
            people[line.substr(0, comma)] = line.substr(comma + 1);
        }
    }
    return people;
}

/// Takes off the list who is in the register. False when that cannot be found out.
bool LeaveOutKnown(People& people)
{
    personnel::QueryMultiPersons condition;
    condition.pageSize = 50;
    condition.sectionList = {"basic"};
    const auto read = [](personnel::TotalData& page, const personnel::QueryMultiPersons& asked) {
        return nexwire::FindMultiPersonComm::request(page, asked, "") && nexwire::LastExchange().number == 0;
    };
    const auto each = [&](const personnel::TotalData& page) {
        for (const personnel::PersonnelInfo& person : page.personnelInfoList) {
            people.erase(person.basic.personNo);
        }
        return page.personnelInfoList.size();
    };
    return host::ForEachPage<personnel::TotalData>(condition, read, each) == host::PagesEnd::Complete;
}

/// Sends batches until all are sent or one has no answer. Who is refused is taken off the list.
void AddBatches(People& people)
{
    for (auto next = people.begin(); next != people.end();) {
        personnel::AddPersonnel batch;
        for (; next != people.end() && batch.personnelInfoList.size() < kBatch; ++next) {
            personnel::PersonnelInfo person;
            person.basic.personNo = next->first;
            person.basic.name = next->second;
            batch.personnelInfoList.push_back(person);
        }
        personnel::PersonnelResultListData results;
        if (!nexwire::AddPersonComm::request(results, batch, "")) {
            std::cout << "  no answer: " << Keel::Error::GetLastError().text << '\n';
            return;
        }
        for (const personnel::PersonnelResult& result : results.personnelResultList) {
            if (result.resultCode != 0) {
                std::cout << "  refused: " << result.personNo << ": " << result.resultMsg << '\n';
                people.erase(result.personNo);
            }
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::cerr << "usage: retrying_importer [--unlucky] FILE ADDRESS\n";
        return 2;
    }
    host::ExecutorOptions parts;
    parts.http.baseAddress = argv[argc - 1];
    parts.retry = host::RetryOptions(); // Reads are repeated; writes only when they never left.
    parts.observe = host::ObserveOptions();
    if (std::string(argv[1]) == "--unlucky") { // A bad day, made up: answers get lost, and connections fail.
        host::FaultRule lost;
        lost.method = 1;
        lost.probability = 0.3;
        host::FaultRule unreachable;
        unreachable.probability = 0.2;
        unreachable.fault = host::FaultRule::Fault::Unsent;
        unreachable.error = host::HostError::ConnectFailed;
        parts.faults = {lost, unreachable};
    }
    host::ObservingExecutor* counts = nullptr;
    nexwire::NexwireInitParams params;
    params.executor = host::MakeExecutor(parts, &counts).release();
    nexwire::NexwireInit(params);

    People missing = ReadList(argv[argc - 2]);
    std::cout << missing.size() << " in the file\n";
    bool all = false;
    if (!missing.empty()) {
        const host::CallScope scope("import", 60000);
        while (LeaveOutKnown(missing) && !(all = missing.empty())) {
            std::cout << missing.size() << " to add\n";
            AddBatches(missing);
        }
    }
    std::cout << (all ? "all are there" : "not all are there: " + Keel::Error::GetLastError().text) << '\n';
    for (const host::CallStatistics& each : counts->Snapshot()) {
        std::cout << each.path << ' ' << each.method << ": " << each.latency.Count() << " calls, " << each.failures
                  << " without an answer\n";
    }
    nexwire::NexwireUnInit();
    return all ? 0 : 1;
}

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include <keel/Error.h>

#include "nexwire/AccessController/AccessGroup.h"
#include "nexwire/LastExchange.h"
#include "nexwire/Nexwire.h"
#include "nexwire/host/HostError.h"
#include "nexwire/host/HttpRequestExecutor.h"
#include "simulator/Platform.h"

namespace {

using namespace nexwire;
using testing::HasSubstr;
using Clock = std::chrono::steady_clock;

/// The library on a platform of its own, over the real transport.
class Faults : public testing::Test {
protected:
    Faults()
    {
        std::string error;
        EXPECT_TRUE(platform.Start(error)) << error;
        host::HttpExecutorOptions options;
        options.baseAddress = "http://127.0.0.1:" + std::to_string(platform.Port());
        NexwireInitParams params;
        params.executor = new host::HttpRequestExecutor(options);
        NexwireInit(params);
    }
    ~Faults() override { NexwireUnInit(); }

    void Rules(const std::string& json)
    {
        const simulator::WorkbenchAnswer answer = platform.Workbench("PUT", "faults", json);
        EXPECT_EQ(answer.status, 200u) << answer.body;
    }

    bool Add(const std::string& name)
    {
        protocol::AccessGroupAddParam group;
        group.name = name;
        std::string guid;
        int code = 0;
        Keel::Error::SetLastError({});
        return CAccessGroupComm::addAccessGroup(group, guid, code);
    }

    std::size_t Count()
    {
        protocol::AccessGroupQueryResponseListData groups;
        EXPECT_TRUE(CAccessGroupComm::queryAccessGroups(groups));
        return groups.accessGroupQueryResponseList.size();
    }

    static bool Failed(host::HostError error)
    {
        const auto last = Keel::Error::GetLastError();
        return last.category == host::kHostErrorCategory && last.number == static_cast<std::int32_t>(error);
    }

    simulator::Platform platform;
};

TEST_F(Faults, EachKindLooksToTheClientAsItDoesInTheField)
{
    const std::string of = R"("function":"AccessGroupComm::addAccessGroup")";
    const auto rule = [&](const std::string& fault) { Rules("[{" + of + "," + fault + "}]"); };

    rule(R"("fault":"delay","ms":150)");
    auto start = Clock::now();
    EXPECT_TRUE(Add("late"));
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(150));

    rule(R"("fault":"drip","ms":150)");
    start = Clock::now();
    EXPECT_TRUE(Add("slow")) << "an answer in pieces is an answer";
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(140));
    EXPECT_EQ(Count(), 2u) << "the rule is for one function";

    rule(R"("fault":"resetBefore")");
    EXPECT_FALSE(Add("unsure"));
    EXPECT_FALSE(LastExchange().answered);
    EXPECT_EQ(Count(), 3u) << "it was carried out all the same";
    rule(R"("fault":"resetBefore","done":false)");
    EXPECT_FALSE(Add("lost"));
    EXPECT_EQ(Count(), 3u);

    rule(R"("fault":"resetAfter")");
    EXPECT_TRUE(Add("gone at once"));
    Rules("[]");
    EXPECT_TRUE(Add("on a new connection"));
    EXPECT_EQ(Count(), 5u);

    rule(R"("fault":"torn")");
    EXPECT_FALSE(Add("half"));
    EXPECT_TRUE(Failed(host::HostError::AnswerIncomplete)) << Keel::Error::GetLastError().text;

    rule(R"("fault":"empty")");
    EXPECT_FALSE(Add("nothing"));
    EXPECT_FALSE(LastExchange().parsed);

    rule(R"("fault":"refuse","code":"3-7")");
    EXPECT_FALSE(Add("refused"));
    EXPECT_TRUE(LastExchange().coded);
    EXPECT_EQ(LastExchange().category, 3);
    EXPECT_EQ(LastExchange().number, 7);

    rule(R"("fault":"status","status":502)");
    EXPECT_FALSE(Add("gateway"));
    EXPECT_EQ(Keel::Error::GetLastError().category, host::kHttpStatusCategory);
    EXPECT_EQ(Keel::Error::GetLastError().number, 502);

    Rules("[]");
    EXPECT_EQ(Count(), 7u) << "torn and empty answers were carried out, refusals were not";
    EXPECT_THAT(platform.Workbench("GET", "exchanges?outcome=fault&limit=1").body, HasSubstr("\"status\":502"));
}

TEST_F(Faults, StrikeAsOftenAsTheRuleSaysAndAlikeForASeed)
{
    Rules(R"([{"path":"/7730/v1/accessController/*","fault":"refuse","times":2}])");
    EXPECT_FALSE(Add("a"));
    EXPECT_FALSE(Add("b"));
    EXPECT_TRUE(Add("c"));

    std::string runs[2];
    for (int run = 0; run < 2; ++run) {
        Rules("[]");
        Rules(R"([{"name":"dice","path":"*","fault":"status","probability":0.5,"seed":42}])");
        for (int i = 0; i < 40; ++i) {
            runs[run] += Add("d" + std::to_string(run * 100 + i)) ? '1' : '0';
        }
    }
    EXPECT_EQ(runs[0], runs[1]);
    EXPECT_THAT(runs[0], testing::AllOf(HasSubstr("1"), HasSubstr("0")));
    const std::string before = platform.Workbench("GET", "faults").body;
    EXPECT_EQ(platform.Workbench("PUT", "faults", R"([{"fault":"delay"},{"fault":"dealy"}])").status, 400u);
    EXPECT_EQ(platform.Workbench("POST", "faults", R"({"fault":"delay","probabilty":1})").status, 400u);
    EXPECT_EQ(platform.Workbench("GET", "faults").body, before) << "a list with a mistake changes nothing";
}

TEST_F(Faults, ExpectationsNameTheCallThatCameNearest)
{
    const auto expect = [&](const std::string& json) {
        platform.Workbench("DELETE", "expectations");
        EXPECT_EQ(platform.Workbench("POST", "expectations", json).status, 200u);
    };
    const auto report = [&] { return platform.Workbench("GET", "expectations").body; };

    Add("before");
    expect(R"([{"function":"AccessGroupComm::addAccessGroup","times":2,"body":{"name":"Night shift"}}])");
    EXPECT_THAT(report(), testing::AllOf(HasSubstr("\"seen\":0"), testing::Not(HasSubstr("nearest"))))
        << "what happened before does not count";
    Count();
    Add("Night shift");
    EXPECT_THAT(report(), HasSubstr("\"met\":false"));
    Add("Night shfit");
    Count();
    EXPECT_THAT(report(), HasSubstr(R"("why":"name is \"Night shfit\", not \"Night shift\"")"));
    platform.Workbench("POST", "expectations", R"({"path":"/7730/v1/*/accessGroups","atLeast":1,"atMost":1})");
    Add("Night shift"); // Refused as it exists; it was called all the same.
    EXPECT_THAT(report(), testing::AllOf(HasSubstr("\"seen\":2,\"met\":true"), HasSubstr("\"seen\":1,\"met\":true"),
                                         testing::StartsWith("{\"met\":true")));
    Add("once more");
    EXPECT_THAT(report(), HasSubstr("once more than wanted"));
    EXPECT_EQ(platform.Workbench("POST", "expectations", R"({"function":"*","tmies":1})").status, 400u);
}

} // namespace

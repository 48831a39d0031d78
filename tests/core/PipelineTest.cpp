#include <atomic>
#include <cstdlib>
#include <thread>

#include <gtest/gtest.h>

#include "Sample.h"
#include "core/Pipeline.h"
#include "nexwire/AccessController/AccessGroup.h"
#include "nexwire/AccessController/Wiegand.h"
#include "nexwire/LastExchange.h"
#include "support/LogCapture.h"
#include "support/StubExecutor.h"

namespace {

using namespace nexwire;

/// A result that shows whether it was touched.
protocol::WiegandQueryResultListData Marked()
{
    protocol::WiegandQueryResultListData result;
    result.wiegandQueryResultList.resize(3);
    return result;
}

bool IsMarked(const protocol::WiegandQueryResultListData& result)
{
    return result.wiegandQueryResultList.size() == 3;
}

TEST(Pipeline, RequestWithoutBodyCarriesTheDefaults)
{
    test::Library library;
    protocol::WiegandQueryResultListData result;
    ASSERT_TRUE(CGetWiegands::request(result));
    const RequestParams& request = library.wire.Last();
    EXPECT_EQ(request.url, "/7730/v1/accessController/wiegands");
    EXPECT_EQ(request.method, 2);
    EXPECT_EQ(request.body, "");
    EXPECT_EQ(request.timeoutMs, 40000);
    EXPECT_TRUE(request.headers.empty() && request.params.empty());
    EXPECT_EQ(library.wire.lastFlag, 1);
}

TEST(Pipeline, ResultIsReplacedOnSuccess)
{
    test::Library library;
    library.wire.AnswerWith(
        R"({"code":"0-0","data":{"wiegandQueryResultList":[{"guid":"g","totalLength":26,"deviceGuidList":["d"]}]}})");
    auto result = Marked();
    ASSERT_TRUE(CGetWiegands::request(result));
    ASSERT_EQ(result.wiegandQueryResultList.size(), 1u);
    EXPECT_EQ(result.wiegandQueryResultList[0].totalLength, 26);
    EXPECT_TRUE(result.IsPresent("wiegandQueryResultList"));
}

TEST(Pipeline, EveryUnreadableAnswerIsFalseAndLeavesTheResultAlone)
{
    test::Library library;
    const test::LogCapture log;
    struct Case {
        std::string body;
        std::size_t logged;
    };
    const std::string envelope = R"({"code":"0-0","msg":"","data":{"wiegandQueryResultList":[]}})";
    std::vector<Case> cases = {{"", 0},
                               {"{", 1},
                               {"<html>", 1},
                               {envelope + "<html>", 1},
                               {envelope + envelope, 1},
                               {"\xFF\xFE", 1},
                               {std::string(100000, '['), 1},
                               {R"({"code":"0-0","data":{"wiegandQueryResultList":[{"guid":"\uDC00"}]}})", 1}};
    for (std::size_t cut = 1; cut < envelope.size(); ++cut) {
        cases.push_back({envelope.substr(0, cut), 1});
    }
    std::size_t logged = 0;
    for (const Case& c : cases) {
        library.wire.AnswerWith(c.body);
        auto result = Marked();
        EXPECT_FALSE(CGetWiegands::request(result)) << c.body;
        EXPECT_TRUE(IsMarked(result)) << c.body;
        EXPECT_TRUE(LastExchange().answered) << c.body;
        EXPECT_FALSE(LastExchange().parsed) << c.body;
        logged += c.logged;
    }
    EXPECT_EQ(log.Count("Failed to cJSON_Parse( ["), logged);
}

TEST(Pipeline, ReadableAnswersOfAnyShapeAreTrue)
{
    test::Library library;
    for (const char* body : {"{}", "[]", "null", "5", R"({"data":null})", R"({"data":[]})", R"({"data":"text"})",
                             R"({"code":5,"msg":7})", R"({"code":"3-4","msg":"refused"})", " {} \r\n"}) {
        library.wire.AnswerWith(body);
        auto result = Marked();
        EXPECT_TRUE(CGetWiegands::request(result)) << body;
        EXPECT_TRUE(result.wiegandQueryResultList.empty()) << body;
    }
}

TEST(Pipeline, FailedTransportKeepsResultAndLastErrorAndLogsNothing)
{
    test::Library library;
    const test::LogCapture log;
    library.wire.Fail();
    auto result = Marked();
    EXPECT_FALSE(CGetWiegands::request(result));
    EXPECT_TRUE(IsMarked(result));
    EXPECT_EQ(Keel::Error::GetLastError().number, 28);
    EXPECT_TRUE(LastExchange().sent);
    EXPECT_FALSE(LastExchange().answered);
    EXPECT_EQ(log.Text(), "");
}

TEST(Envelope, CodeTexts)
{
    const test::LogCapture log;
    struct Case {
        const char* text;
        std::int32_t category;
        std::int32_t number;
        std::size_t logged;
    };
    const Case cases[] = {{"0-0", 0, 0, 0},   {"5-17", 5, 17, 0},
                          {"x-y", 0, 0, 0},   {" 5- 17x", 5, 17, 0},
                          {"-", 0, 0, 0},     {"5-", 5, 0, 0},
                          {"12", 0, 0, 1},    {"", 0, 0, 1},
                          {"1-2-3", 0, 0, 1}, {"-1-2", 0, 0, 1},
                          {"+3-4", 3, 4, 0},  {"0x10-010", 0, 10, 0},
                          {"1--2", 0, 0, 1},  {"99999999999-1", INT32_MAX, 1, 0}};
    std::size_t logged = 0;
    for (const Case& c : cases) {
        const Keel::Error::ErrorCode code = protocol::Str2ErrorCode(c.text);
        EXPECT_EQ(code.category, c.category) << c.text;
        EXPECT_EQ(code.number, c.number) << c.text;
        EXPECT_EQ(code.text, "") << c.text;
        logged += c.logged;
    }
    EXPECT_EQ(log.Count("Invalid return code. code: ["), logged);
    EXPECT_EQ(log.Count("Invalid return code. code: [12]."), 1u);
}

TEST(Envelope, ReadsCodeMessageAndDataIntoAnOwnedStructure)
{
    const auto data = std::make_shared<sample::Result>();
    protocol::ReturnData envelope(data);
    ASSERT_TRUE(envelope.Parse(R"({"data":{"name":"after"},"msg":"text","code":"2-3"})"));
    EXPECT_EQ(envelope.code.category, 2);
    EXPECT_EQ(envelope.code.number, 3);
    EXPECT_EQ(envelope.msg, "text");
    EXPECT_EQ(data->name, "after");
    protocol::ReturnData untyped;
    EXPECT_TRUE(untyped.Parse(R"({"code":[],"data":{"name":1}})"));
    EXPECT_EQ(untyped.code.number, 0);

    struct Counting : sample::Result {
        int parses = 0;
        void Parse(const cJSON*) override { ++parses; }
    };
    const auto counting = std::make_shared<Counting>();
    protocol::ReturnData without(counting);
    EXPECT_TRUE(without.Parse(R"({"code":"0-0","msg":""})"));
    EXPECT_EQ(counting->parses, 0);
    EXPECT_TRUE(without.Parse(R"({"code":"0-0","data":{}})"));
    EXPECT_EQ(counting->parses, 1);
}

TEST(Endings, JudgedFamiliesRefuseANonZeroNumberAndMakeItTheLastError)
{
    test::Library library;
    sample::Result result;
    library.wire.AnswerWith(R"({"code":"6-5","data":{"name":"no"}})");
    EXPECT_FALSE(ExchangeJudged(Query("/x"), result));
    EXPECT_EQ(result.name, "before");
    EXPECT_EQ(Keel::Error::GetLastError().category, 6);
    EXPECT_EQ(Keel::Error::GetLastError().number, 5);
    EXPECT_EQ(LastExchange().number, 5);
    EXPECT_TRUE(LastExchange().parsed);

    int code = -1;
    library.wire.AnswerWith("broken");
    EXPECT_FALSE(ExchangeForCode(Query("/x"), result, code));
    EXPECT_EQ(code, -1);
    library.wire.Fail();
    EXPECT_FALSE(ExchangeForCode(Query("/x"), code));
    EXPECT_EQ(code, -1);
    library.wire.AnswerWith(R"({"code":"6-9","data":{"name":"no"}})");
    EXPECT_FALSE(ExchangeForCode(Query("/x"), result, code));
    EXPECT_EQ(code, 9);
    EXPECT_EQ(result.name, "before");
    // A category without a number is no failure.
    library.wire.AnswerWith(R"({"code":"6-0","data":{"name":"yes"}})");
    EXPECT_TRUE(ExchangeForCode(Query("/x"), result, code));
    EXPECT_EQ(code, 0);
    EXPECT_EQ(result.name, "yes");
}

TEST(Endings, UnreadAnswersMayBeEmptyButNoResultStillNeedsAnEnvelope)
{
    test::Library library;
    library.wire.AnswerWith("");
    EXPECT_TRUE(ExchangeUnread(Write("/x")));
    library.wire.AnswerWith("");
    EXPECT_FALSE(Exchange(Write("/x")));
    library.wire.AnswerWith(R"({"code":"1-2"})");
    EXPECT_TRUE(Exchange(Write("/x")));
}

TEST(Operations, VerbsHeadersTimeoutsAndHostileIdentifiers)
{
    const sample::Part body;
    struct Case {
        Operation operation;
        std::int32_t method;
        bool hasBody;
    };
    const Case cases[] = {{Read("/p"), 0, false},       {Read("/p", body), 0, true},  {Write("/p"), 1, false},
                          {Write("/p", body), 1, true}, {Query("/p"), 2, false},      {Query("/p", body), 2, true},
                          {Remove("/p"), 3, false},     {Remove("/p", body), 3, true}};
    for (const Case& c : cases) {
        const RequestParams request = c.operation.Build();
        EXPECT_EQ(request.method, c.method);
        EXPECT_EQ(!request.body.empty(), c.hasBody);
        EXPECT_EQ(request.timeoutMs, 40000);
    }
    EXPECT_EQ(Query("/p").Timeout(0).Build().timeoutMs, 40000);
    EXPECT_EQ(Query("/p").Timeout(15000).Build().timeoutMs, 15000);
    EXPECT_EQ(Query("/p").OnSlowThread().Build().headers,
              (std::map<std::string, std::string>{{"RequstType", "slowThread"}}));
    EXPECT_TRUE(Query("/p").HeaderUnlessEmpty("SID", "").Build().headers.empty());
    for (const std::string& id : test::HostileIds()) {
        EXPECT_EQ(Query(Path("/a/", id, "/b/", id)).Build().url, "/a/" + id + "/b/" + id);
    }
}

TEST(LastExchange, TellsWhatBecameOfTheThreadsOwnCall)
{
    test::Library library;
    library.wire.AnswerWith(R"({"code":"3-4","msg":"no such group"})");
    protocol::AccessGroupQueryResponseData result;
    EXPECT_TRUE(CAccessGroupComm::getAccessGroup(result, "g"));
    const ExchangeRecord& record = LastExchange();
    EXPECT_EQ(record.path, "/7730/v1/accessController/accessGroups/g");
    EXPECT_EQ(record.method, 2);
    EXPECT_TRUE(record.sent && record.answered && record.parsed);
    EXPECT_EQ(record.category, 3);
    EXPECT_EQ(record.number, 4);
    EXPECT_EQ(record.message, "no such group");
    std::thread([] { EXPECT_EQ(LastExchange().path, ""); }).join();
}

TEST(Threads, EightThreadsGetTheirOwnAnswers)
{
    test::Library library;
    std::atomic<int> calls{0};
    // The stub serialises its callers, so what runs at once is the library around it.
    library.wire.handler = [&](RspInfos& response, const RequestParams& request) {
        ++calls;
        const std::string id = request.url.substr(request.url.rfind('/') + 1);
        response.body =
            R"({"code":"0-0","msg":")" + id + R"(","data":{"accessGroupQueryResponse":{"name":")" + id + R"("}}})";
        return true;
    };
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (int t = 0; t < 8; ++t) {
        threads.emplace_back([&wrong, t] {
            for (int i = 0; i < 200; ++i) {
                const std::string id = std::to_string(t) + "-" + std::to_string(i);
                protocol::AccessGroupQueryResponseData result;
                if (!CAccessGroupComm::getAccessGroup(result, id) || result.accessGroupQueryResponse.name != id ||
                    LastExchange().message != id) {
                    ++wrong;
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(calls, 1600);
}

TEST(Exceptions, NoneOfAnExecutorsCrossTheBoundary)
{
    test::Library library;
    library.wire.handler = [](RspInfos&, const RequestParams&) -> bool { throw std::bad_alloc(); };
    auto result = Marked();
    EXPECT_FALSE(CGetWiegands::request(result));
    EXPECT_TRUE(IsMarked(result));
    int code = -1;
    EXPECT_FALSE(CAccessGroupComm::modifyAccessGroupName("g", "n", code));
    EXPECT_FALSE(CAccessGroupComm::modifyFaceStatusByDeviceGuid("d"));
    EXPECT_EQ(code, -1);
}

} // namespace

#include <gtest/gtest.h>

#include "Application/PassThrough/PassThrough.h"
#include "core/Pipeline.h"
#include "nexwire/AccessController/AccessGroup.h"
#include "nexwire/AccessController/Wiegand.h"
#include "nexwire/Attendance/Calculation.h"
#include "nexwire/Attendance/Shift.h"
#include "protocol/Statistics/Statistics.h"
#include "support/StubExecutor.h"

// The pieces that request functions are made of, where a row per function would not show it.

namespace {

using namespace nexwire;

const std::string kRefusal = R"({"code":"3-17","msg":"refused","data":{"wiegandQueryResultList":[{"guid":"g"}]}})";

TEST(Vocabulary, TextsAndEntriesTravelAsGiven)
{
    test::Library library;
    const std::string text("no JSON\0at all", 14);
    ASSERT_TRUE(ExchangeUnread(
        Write("/p").Text(text).Header("a", "1").Header("b", "2").Header("c", "3").Param("p", "4").Timeout(15000)));
    const RequestParams& request = library.wire.Last();
    EXPECT_EQ(request.body, text);
    EXPECT_EQ(request.headers, (std::map<std::string, std::string>{{"a", "1"}, {"b", "2"}, {"c", "3"}}));
    EXPECT_EQ(request.params, (std::map<std::string, std::string>{{"p", "4"}}));
    EXPECT_EQ(request.timeoutMs, 15000);
}

TEST(Vocabulary, WhatCannotBeSaidCompletelyIsNotSent)
{
    test::Library library;
    EXPECT_FALSE(ExchangeUnread(
        Write("/p").Header("a", "1").Header("b", "2").Header("c", "3").Header("d", "4").Header("e", "5")));
    EXPECT_TRUE(library.wire.requests.empty());
}

TEST(Vocabulary, BytesAndFieldsOfTheAnswer)
{
    test::Library library;
    const std::string picture("\xFF\xD8\0\x01", 4);
    library.wire.answers.push_back({picture, true, {{"content-type", "image/jpeg"}}});
    std::string bytes = "before";
    std::string type = "before";
    ASSERT_TRUE(ExchangeForBytes(Query("/p"), bytes, "Content-Type", type));
    EXPECT_EQ(bytes, picture);
    EXPECT_EQ(type, "image/jpeg");

    library.wire.answers.push_back({"body", true, {{"Content-Types", "x"}, {"Content", "y"}}});
    ASSERT_TRUE(ExchangeForField(Query("/p"), "Content-Type", type));
    EXPECT_EQ(type, "image/jpeg") << "without the field the text stays";

    library.wire.Fail();
    EXPECT_FALSE(ExchangeForBytes(Query("/p"), bytes, "Content-Type", type));
    EXPECT_EQ(bytes, picture);
}

TEST(Vocabulary, EnvelopeOfAFailedExchangeBecomesTheLastErrorOnlyWhereItIsSaid)
{
    test::Library library;
    for (const bool said : {false, true}) {
        library.wire.answers.push_back({kRefusal, false, {}});
        Operation operation = Query("/p");
        EXPECT_FALSE(ExchangeUnread(said ? operation.ErrorFromAnswer() : operation));
        EXPECT_EQ(Keel::Error::GetLastError().number, said ? 17 : 28);
        EXPECT_EQ(Keel::Error::GetLastError().category, said ? 3 : 7);
    }
    // Nothing to learn from: the executor's error stays.
    for (const char* body : {"", "<html>", "{}", R"({"code":"0-0"})"}) {
        library.wire.answers.push_back({body, false, {}});
        EXPECT_FALSE(ExchangeUnread(Query("/p").ErrorFromAnswer()));
        EXPECT_EQ(Keel::Error::GetLastError().number, 28) << body;
    }
}

TEST(Vocabulary, PartialUpdatesSendTheKeysOfTheirMembers)
{
    test::Library library;
    using Cont = protocol::DeviceDownloadDetailsCont;
    ASSERT_TRUE(ExchangeUnread(Write("/p", Only(&Cont::isQuery, true))));
    EXPECT_EQ(library.wire.Last().body, "{\n\t\"deviceDownloadDetailsCont\":\t{\n\t\t\"isQuery\":\ttrue\n\t}\n}");
    protocol::DetailsFilterCondition filter;
    ASSERT_TRUE(ExchangeUnread(Write("/p", Only(&Cont::detailsFilterCondition, filter))));
    EXPECT_NE(library.wire.Last().body.find("\"DetailsFilterCondition\""), std::string::npos)
        << "the key, not the name";
    EXPECT_EQ(library.wire.Last().body.find("isQuery"), std::string::npos);
}

TEST(Vocabulary, LastExchangeTellsWhetherThereWasACode)
{
    test::Library library;
    for (const auto& [body, coded] : std::map<std::string, bool>{{R"({"code":"0-0"})", true},
                                                                 {R"({"code":"4-5"})", true},
                                                                 {R"({"code":5})", false},
                                                                 {R"({"code":"12"})", false},
                                                                 {"[]", false}}) {
        library.wire.AnswerWith(body);
        EXPECT_TRUE(Exchange(Query("/p")));
        EXPECT_EQ(LastExchange().coded, coded) << body;
    }
}

TEST(Vocabulary, RequestsInsideARequestLeaveNoTrace)
{
    test::Library library;
    int depth = 0;
    library.wire.handler = [&](RspInfos& response, const RequestParams&) {
        if (depth++ == 0) {
            library.wire.mutex.unlock();
            protocol::WiegandQueryResultListData inner;
            EXPECT_TRUE(CGetWiegands::request(inner));
            library.wire.mutex.lock();
            EXPECT_TRUE(LastExchange().parsed);
            response.body = "<html>";
            return true;
        }
        response.body = kRefusal;
        return true;
    };
    EXPECT_FALSE(Exchange(Write("/outer")));
    EXPECT_EQ(LastExchange().path, "/outer");
    EXPECT_TRUE(LastExchange().answered);
    EXPECT_FALSE(LastExchange().parsed);
    EXPECT_EQ(LastExchange().number, 0);
    EXPECT_EQ(core::FailureOfLastExchange().text, "the answer was not readable");

    library.wire.handler = nullptr;
    ASSERT_TRUE(Exchange(Write("/named")));
    {
        const core::InnerExchanges inner;
        library.wire.Fail();
        EXPECT_FALSE(Exchange(Write("/on-the-way")));
    }
    EXPECT_EQ(LastExchange().path, "/named");
    EXPECT_TRUE(LastExchange().parsed);
}

TEST(Vocabulary, FailuresOfOtherCallsAreNotHandedOut)
{
    Keel::Error::SetLastError({8, 9, "of another call"});
    EXPECT_FALSE(Exchange(Query("/p")));
    EXPECT_EQ(core::FailureOfLastExchange().number, 0);
    EXPECT_NE(core::FailureOfLastExchange().text.find("nothing was sent"), std::string::npos);
    test::Library library;
    library.wire.Fail();
    EXPECT_FALSE(Exchange(Query("/p")));
    EXPECT_EQ(core::FailureOfLastExchange().number, 28);
}

// ---- Pages of batches ----

std::string Page(const std::string& items)
{
    return R"({"code":"0-0","data":{"batchPassThroughRsp":{"guid":"next","isFinish":true,"batchReturnDataList":[)" +
           items + "]}}}";
}

TEST(Pages, ItemsAreAppendedInOrderAndABadOneEndsTheCall)
{
    test::Library library;
    const std::string good = R"({"outBuffer":"{\"pdcResultData\":{\"enterNum\":5}}"})";
    std::vector<protocol::PdcResultData> list(1);
    std::string guid = "before";
    std::string error;
    bool finished = false;
    const auto page = [&] {
        return AppendPage(Route::External, protocol::BatchPassThroughReq(), "d", list, guid, finished, &error);
    };
    for (const char* bad :
         {R"({"outBuffer":""})", R"({"outBuffer":"{}"})", R"({"outBuffer":"<a/>"})", R"({"code":4})"}) {
        list.resize(1);
        library.wire.AnswerWith(Page(good + "," + bad + "," + good));
        EXPECT_FALSE(page()) << bad;
        ASSERT_EQ(list.size(), 2u) << bad;
        EXPECT_EQ(list[1].enterNum, 5);
        EXPECT_EQ(guid, "before");
        EXPECT_FALSE(finished);
        EXPECT_FALSE(error.empty());
    }
    library.wire.AnswerWith(Page(""));
    EXPECT_TRUE(page());
    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(guid, "next");
    EXPECT_TRUE(finished);
}

// ---- Envelopes and pages that are read in their own way ----

TEST(Judging, TheCallerSeesTheWholeEnvelope)
{
    test::Library library;
    protocol::ReturnData result;
    struct Case {
        const char* body;
        bool done;
        bool good;
    };
    for (const Case& c : {Case{R"({"code":"0-0","msg":""})", true, true}, Case{"{}", true, true},
                          Case{R"({"code":"0-0","msg":"but"})", true, false}, Case{R"({"code":"3-0"})", true, false},
                          Case{R"({"code":"0-4"})", true, false}, Case{"", false, false}, Case{"[", false, false}}) {
        result = protocol::ReturnData();
        library.wire.AnswerWith(c.body);
        const bool done = PeriodConfigComm::modifyPeriodInfo(result, {}, "p");
        EXPECT_EQ(done, c.done) << c.body;
        EXPECT_EQ(PeriodConfigComm::judgeResultSuccess(done, result), c.good) << c.body;
    }
    result = protocol::ReturnData();
    EXPECT_FALSE(PeriodConfigComm::judgeResultSuccess(false, result));
    result.code.text = "t";
    EXPECT_FALSE(PeriodConfigComm::judgeResultSuccess(true, result));
}

std::string Row(const std::string& replace = "", const std::string& by = "")
{
    std::string row =
        R"({"personnelID":"p","personnelCode":"7","personnelName":"n","orgName":"o","attendenceDate":"2026-03-02",)"
        R"("shiftName":"s","periodID":"i","periodName":"e","startWorkStatus":"late","endWorkStatus":"normal",)"
        R"("lateDuration":1,"earlyDuration":2,"attendanceDuration":3,"absenceDuration":4,"workDuration":5,)"
        R"("restDuartion":6,"vocationName":"v","vocationDuartion":7,"level1Duartion":8,"level2Duartion":9,)"
        R"("level3Duartion":10,"detail":"d"})";
    const std::size_t at = replace.empty() ? std::string::npos : row.find(replace);
    return at == std::string::npos ? row : row.replace(at, replace.size(), by);
}

TEST(CalculationPage, IsReadWholeOrNotAtAll)
{
    test::Library library;
    const std::string head = R"({"code":"0-0","data":{"statisticsCalcData":{"total":9,"pageSize":2,"pageNo":3,)";
    protocol::StatisticsCalcDataData result;
    const auto read = [&](const std::string& body) {
        result.statisticsCalcData.total = -1;
        library.wire.AnswerWith(body);
        const bool done = CalculateComm::queryCalculate(result, {});
        EXPECT_EQ(result.statisticsCalcData.total == -1, !done) << body;
        EXPECT_EQ(LastExchange().answered, true);
        return done;
    };
    ASSERT_TRUE(read(head + "\"statisticsCalcList\":[" + Row() + "," + Row("\"p\"", "\"q\"") + "]}}}"));
    ASSERT_EQ(result.statisticsCalcData.statisticsCalcList.size(), 2u);
    const protocol::StatisticsCalc& row = result.statisticsCalcData.statisticsCalcList[1];
    EXPECT_EQ(row.personnelID, "q");
    EXPECT_EQ(row.attendenceDate, "2026-03-02");
    EXPECT_EQ(row.restDuartion, 6);
    EXPECT_EQ(row.level3Duartion, 10);
    EXPECT_EQ(row.detail, "d");
    EXPECT_EQ(result.statisticsCalcData.pageNo, 3);
    EXPECT_TRUE(read(head + "\"statisticsCalcList\":[]}}}"));
    EXPECT_TRUE(result.statisticsCalcData.statisticsCalcList.empty());

    for (const std::string& list :
         {std::string("{}"), std::string("null"), std::string("[5]"), std::string("[[]]"), std::string("[{}]"),
          "[" + Row("\"detail\"", "\"details\"") + "]", "[" + Row("\"d\"", "4") + "]", "[" + Row(":6", ":\"6\"") + "]",
          "[" + Row(":6", ":6.5") + "]", "[" + Row(":6", ":4294967296") + "]"}) {
        EXPECT_FALSE(read(head + "\"statisticsCalcList\":" + list + "}}}")) << list;
    }
    for (const std::string& body :
         {std::string(), std::string("[]"), std::string("{}"), head + "}}", head + "\"x\":1}}}",
          std::string(R"({"data":{"statisticsCalcData":{"statisticsCalcList":[]}}})"), std::string(200000, '[')}) {
        EXPECT_FALSE(read(body)) << body.substr(0, 100);
    }
    EXPECT_FALSE(read(R"({"code":"10-4","msg":"no"})"));
    EXPECT_EQ(Keel::Error::GetLastError().number, 4);
    EXPECT_EQ(LastExchange().message, "no");
}

} // namespace

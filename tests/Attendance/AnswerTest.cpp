#include <algorithm>

#include <gtest/gtest.h>

#include <keel/Error.h>

#include "nexwire/Attendance/Calculation.h"
#include "nexwire/Attendance/Record.h"
#include "nexwire/Attendance/Shift.h"
#include "nexwire/LastExchange.h"
#include "support/StubExecutor.h"
#include "support/TempFolder.h"

namespace {

using namespace nexwire;

// ---- The page reader ----

const char* const kRow =
    R"({"personnelID":"p1","personnelCode":"001","personnelName":"A\u0000\u00e9\ud83d\ude00","orgName":"","attendenceDate":)"
    R"("2026-03-02","shiftName":"Office","periodID":"d","periodName":"Day","startWorkStatus":"late","endWorkStatus":)"
    R"("normal","lateDuration":11,"earlyDuration":-2,"attendanceDuration":480,"absenceDuration":0,"workDuration":)"
    R"(2147483647,"restDuartion":60,"vocationName":"ill","vocationDuartion":5,"level1Duartion":6,"level2Duartion":7,)"
    R"("level3Duartion":8,"detail":"09:11 18:00"})";

std::string Page(const std::string& list)
{
    return R"({"code":"0-0","msg":"","data":{"statisticsCalcData":{"total":7,"pageSize":3,"pageNo":2,)"
           R"("statisticsCalcList":)" +
           list + "}}}";
}

/// What is replaced in a text must be there.
std::string With(std::string text, const std::string& part, const std::string& instead)
{
    const std::size_t at = text.find(part);
    EXPECT_NE(at, std::string::npos) << part;
    return text.replace(at, part.size(), instead);
}

class CalculationPage : public testing::Test {
protected:
    CalculationPage() { result.statisticsCalcData.total = -1; }

    bool Read(const std::string& answer)
    {
        library.wire.AnswerWith(answer);
        return CalculateComm::queryCalculate(result, {});
    }

    test::Library library;
    protocol::StatisticsCalcDataData result;
};

TEST_F(CalculationPage, EveryMemberArrivesInAnyOrderAndCompany)
{
    // The same row once as it mostly comes, once with its first member last and others between.
    std::string turned = With(kRow, R"("personnelID":"p1",)", R"("more":{"detail":[1]},)");
    turned =
        With(turned, R"("detail":"09:11 18:00")", R"("detail":"09:11 18:00","detail":"second","personnelID":"p1")");
    ASSERT_TRUE(Read(Page("[" + std::string(kRow) + "," + turned + "]")));
    const protocol::StatisticsCalcData& page = result.statisticsCalcData;
    EXPECT_EQ(page.total, 7);
    EXPECT_EQ(page.pageSize, 3);
    EXPECT_EQ(page.pageNo, 2);
    ASSERT_EQ(page.statisticsCalcList.size(), 2u);
    for (const protocol::StatisticsCalc& row : page.statisticsCalcList) {
        EXPECT_EQ(row.personnelID, "p1");
        EXPECT_EQ(row.personnelName, std::string("A\0\xC3\xA9\xF0\x9F\x98\x80", 8));
        EXPECT_EQ(row.attendenceDate, "2026-03-02");
        EXPECT_EQ(row.startWorkStatus, "late");
        EXPECT_EQ(row.lateDuration, 11);
        EXPECT_EQ(row.earlyDuration, -2);
        EXPECT_EQ(row.workDuration, 2147483647);
        EXPECT_EQ(row.restDuartion, 60);
        EXPECT_EQ(row.vocationName, "ill");
        EXPECT_EQ(row.level3Duartion, 8);
        EXPECT_EQ(row.detail, "09:11 18:00") << "the first of two counts";
    }
    ASSERT_TRUE(Read(Page("[]")));
    EXPECT_EQ(result.statisticsCalcData.total, 7);
    EXPECT_TRUE(result.statisticsCalcData.statisticsCalcList.empty()) << "the page is replaced";
}

TEST_F(CalculationPage, BrokenPagesAreRefusedAndLeaveTheResultAlone)
{
    const std::string row = kRow;
    const std::string good = Page("[" + row + "," + row + "]");
    std::vector<std::string> broken = {
        "",
        "no JSON",
        "[]",
        "null",
        good.substr(0, good.size() - 1),
        good + "x",
        R"({"code":"0-0","msg":""})",
        R"({"code":"0-0","msg":"","data":[]})",
        R"({"code":"0-0","msg":"","data":{"statisticsCalcData":null}})",
        With(good, R"("statisticsCalcList")", R"("StatisticsCalcList")"),
        Page("{}"),
        Page("null"),
        Page(R"(["row"])"),
        Page("[" + row + ",null]"),
        With(good, R"("total":7)", R"("total":"7")"),
        With(good, R"("pageNo":2)", R"("pageNo":2147483648)"),
        With(good, R"("pageSize":3,)", ""),
    };
    // Every member is required, as what it is.
    for (const char* key : {"personnelID", "attendenceDate", "vocationName", "detail", "lateDuration", "restDuartion",
                            "vocationDuartion", "level1Duartion", "level3Duartion"}) {
        const std::string quoted = "\"" + std::string(key) + "\":";
        broken.push_back(Page("[" + row + "," + With(row, quoted, "\"x\":") + "]"));
        const std::size_t at = row.find(quoted) + quoted.size();
        for (const char* other : {"null", "1.5", "{}"}) {
            broken.push_back(Page("[" + row.substr(0, at) + other + row.substr(row.find_first_of(",}", at)) + "]"));
        }
    }
    for (const std::string& answer : broken) {
        EXPECT_FALSE(Read(answer)) << answer;
        EXPECT_EQ(result.statisticsCalcData.total, -1);
        EXPECT_TRUE(result.statisticsCalcData.statisticsCalcList.empty());
    }
    EXPECT_FALSE(Read(Page(std::string(500000, '[') + std::string(500000, ']')))) << "deep, but no row";
}

TEST_F(CalculationPage, ARefusalIsTheLastErrorWhateverThePageHolds)
{
    EXPECT_FALSE(Read(With(Page("[]"), R"("code":"0-0","msg":"")", R"("code":"12-8","msg":"no right")")));
    EXPECT_EQ(result.statisticsCalcData.total, -1);
    EXPECT_EQ(Keel::Error::GetLastError().category, 12);
    EXPECT_EQ(Keel::Error::GetLastError().number, 8);
    EXPECT_EQ(LastExchange().message, "no right");
}

// ---- Uploads ----

TEST(AttendanceUpload, TheClosingRequestDecides)
{
    TempFolder folder;
    const std::string file = folder.Write("records.csv", std::string(3u << 20u, 'x'));
    std::vector<std::string> guids;
    for (std::size_t failing = 1; failing <= 5; ++failing) {
        test::Library library;
        const auto progress = std::make_shared<int>(-7);
        std::string guid = "before";
        library.wire.handler = [&](RspInfos& response, const RequestParams&) {
            if (library.wire.requests.size() == failing) {
                Keel::Error::SetLastError({7, 28, "gone"});
                return false;
            }
            response.body = R"({"code":"12-5","msg":""})"; // What the executor accepts is accepted.
            return true;
        };
        const bool sent = FileImportEventCommAtt::requestUploadByAttendance(progress, guid, file);
        EXPECT_EQ(sent, failing == 5);
        EXPECT_EQ(library.wire.requests.size(), std::min<std::size_t>(failing, 4)) << "nothing follows a failure";
        EXPECT_EQ(*progress, (std::vector<int>{-7, 33, 66, 99, 100})[failing - 1]);
        EXPECT_EQ(library.wire.requests.front().url, "/7730/v1/attendance/orirecord/uploadFile");
        EXPECT_EQ(library.wire.requests.front().headers.at("query"), "uploadGuid=" + guid) << "known before it fails";
        EXPECT_EQ(std::count(guids.begin(), guids.end(), guid), 0) << "each attempt has its own";
        guids.push_back(guid);
    }
    test::Library library;
    std::string guid = "before";
    EXPECT_FALSE(FileImportEventCommAtt::requestUploadByAttendance({}, guid, folder.Write("empty.csv", "")));
    EXPECT_TRUE(library.wire.requests.empty());
    EXPECT_EQ(guid, "before");
}

// ---- The check of a changed period ----

TEST(PeriodConfig, SuccessIsADefaultEnvelope)
{
    protocol::ReturnData result;
    EXPECT_TRUE(PeriodConfigComm::judgeResultSuccess(true, result));
    EXPECT_FALSE(PeriodConfigComm::judgeResultSuccess(false, result));
    test::Library library;
    for (const char* envelope :
         {R"({"code":"0-0","msg":"changed"})", R"({"code":"0-4","msg":""})", R"({"code":"12-0","msg":""})"}) {
        library.wire.AnswerWith(envelope);
        const bool parsed = PeriodConfigComm::modifyPeriodInfo(result, {}, "p");
        EXPECT_TRUE(parsed) << "judging is the caller's";
        EXPECT_FALSE(PeriodConfigComm::judgeResultSuccess(parsed, result)) << envelope;
    }
    library.wire.AnswerWith(R"({"code":"0-0","msg":""})");
    EXPECT_TRUE(PeriodConfigComm::judgeResultSuccess(PeriodConfigComm::modifyPeriodInfo(result, {}, "p"), result));
}

} // namespace

#include "nexwire/PassThrough/PassThrough.h"

#include "Application/PassThrough/PassThrough.h"
#include "nexwire/DeviceParameters/AcsParam.h"
#include "support/RequestVectors.h"

namespace {

using namespace nexwire;

const std::string kDagAnswer =
    R"({"code":"0-0","data":{"dagPassThroughRsp":{"outBuffer":"out","statusBuffer":"status"}}})";

/// The four ways to send a command of one's own, as one signature.
struct DagEntry {
    const char* name;
    std::string path;
    bool takesTimeout;
    std::function<bool(const protocol::DagPassThroughReq&, const std::string&, protocol::DagPassThroughRsp&, int)> call;
};

std::vector<DagEntry> DagEntries()
{
    return {
        {"dagRequest", test::kExternal, false,
         [](auto& request, auto& id, auto& response, int) {
             return CPassThroughRequest::dagRequest(response, request, id);
         }},
        {"dagRequestInner", test::kInternal, false,
         [](auto& request, auto& id, auto& response, int) {
             return CPassThroughRequest::dagRequestInner(response, request, id);
         }},
        {"dagThroughRequest", test::kInternal, true,
         [](auto& request, auto& id, auto& response, int timeoutMs) {
             protocol::DagPassThroughRspData holder;
             holder.dagPassThroughRsp = response;
             const bool success = accessParamComm::dagThroughRequest(request, id, holder, timeoutMs);
             response = holder.dagPassThroughRsp;
             return success;
         }},
        {"dagThroughRequestExternal", test::kExternal, true,
         [](auto& request, auto& id, auto& response, int timeoutMs) {
             protocol::DagPassThroughRspData holder;
             holder.dagPassThroughRsp = response;
             const bool success = accessParamComm::dagThroughRequestExternal(holder, request, id, timeoutMs);
             response = holder.dagPassThroughRsp;
             return success;
         }},
    };
}

TEST(PassThrough, SingleCommands)
{
    test::Library library;
    library.wire.otherwise = kDagAnswer;
    protocol::DagPassThroughReq request;
    request.command = -5;
    request.condBuffer = "a\"b";
    request.inBuffer = "{\n\t\"x\": 1}";
    for (const DagEntry& entry : DagEntries()) {
        SCOPED_TRACE(entry.name);
        for (const std::string& id : test::HostileIds()) {
            for (const int timeoutMs : {0, 1, 5000, 600000}) {
                protocol::DagPassThroughRsp response;
                EXPECT_TRUE(entry.call(request, id, response, timeoutMs));
                EXPECT_EQ(response.outBuffer, "out");
                EXPECT_EQ(response.statusBuffer, "status");
                const RequestParams& sent = library.wire.Last();
                EXPECT_EQ(sent.url, test::With(entry.path, id));
                EXPECT_EQ(sent.method, 2);
                EXPECT_EQ(sent.timeoutMs, entry.takesTimeout && timeoutMs != 0 ? timeoutMs : 40000);
                EXPECT_TRUE(sent.headers.empty() && sent.params.empty());
                EXPECT_EQ(sent.body, "{\n\t\"dagPassThroughReq\":\t{\n\t\t\"command\":\t-5,\n"
                                     "\t\t\"condBuffer\":\t\"a\\\"b\",\n"
                                     "\t\t\"inBuffer\":\t\"{\\n\\t\\\"x\\\": 1}\"\n\t}\n}");
            }
        }
    }
}

TEST(PassThrough, FailuresLeaveTheResponseAsItWas)
{
    const auto expectFailure = [](const char* what) {
        SCOPED_TRACE(what);
        for (const DagEntry& entry : DagEntries()) {
            protocol::DagPassThroughRsp response;
            response.outBuffer = "before";
            EXPECT_FALSE(entry.call({}, "d", response, 0)) << entry.name;
            EXPECT_EQ(response.outBuffer, "before") << entry.name;
        }
        protocol::NFCCfg nfc;
        nfc.readTimeout = 17;
        EXPECT_FALSE(AcsParamConfig::getNFCConfigRequest(nfc, "d"));
        EXPECT_EQ(nfc.readTimeout, 17);
        EXPECT_FALSE(AcsParamConfig::setNFCConfigRequest(nfc, "d"));
        EXPECT_FALSE(DeviceCommand(Route::Internal, 1, "d"));
    };
    expectFailure("before start-up");
    test::Library library;
    for (const char* body : {"", "broken", "[]trailing", R"({"code":"0-0"}<html>)"}) {
        library.wire.otherwise = body;
        expectFailure(body);
    }
    library.wire.handler = [](RspInfos& response, const RequestParams&) {
        response.body = kDagAnswer;
        return false;
    };
    expectFailure("transport");
}

TEST(PassThrough, RefusalsOfThePlatformAreAnswers)
{
    // The number of the envelope is the caller's to judge; a get then fails for want of a structure.
    test::Library library;
    library.wire.otherwise = R"({"code":"3-17","msg":"device is off-line"})";
    protocol::DagPassThroughRsp response;
    response.outBuffer = "before";
    EXPECT_TRUE(CPassThroughRequest::dagRequest(response, {}, "d"));
    EXPECT_EQ(response.outBuffer, "");
    EXPECT_TRUE(AcsParamConfig::setNFCConfigRequest({}, "d"));
    protocol::NFCCfg nfc;
    nfc.readTimeout = 17;
    EXPECT_FALSE(AcsParamConfig::getNFCConfigRequest(nfc, "d"));
    EXPECT_EQ(nfc.readTimeout, 17);
}

TEST(PassThrough, StructuresTravelAsTextUnderTheirRootName)
{
    test::Library library;
    protocol::NFCCfg nfc;
    nfc.enable = true;
    nfc.cardNoSource = "application";
    nfc.applicationId = "F0\\01";
    nfc.readTimeout = 900;
    EXPECT_TRUE(AcsParamConfig::setNFCConfigRequest(nfc, "d"));
    EXPECT_EQ(
        library.wire.Last().body,
        "{\n\t\"dagPassThroughReq\":\t{\n\t\t\"command\":\t4141,\n\t\t\"condBuffer\":\t\"\",\n"
        R"(		"inBuffer":	"{\n\t\"nFCCfg\":\t{\n\t\t\"enable\":\ttrue,\n\t\t\"cloneProtection\":\tfalse,\n)"
        R"(\t\t\"cardNoSource\":\t\"application\",\n\t\t\"applicationId\":\t\"F0\\\\01\",\n)"
        R"(\t\t\"readTimeout\":\t900\n\t}\n}")"
        "\n\t}\n}");

    nfc.WriteOnly({"enable"});
    EXPECT_TRUE(AcsParamConfig::setNFCConfigRequest(nfc, "d"));
    EXPECT_NE(library.wire.Last().body.find(R"("{\n\t\"nFCCfg\":\t{\n\t\t\"enable\":\ttrue\n\t}\n}")"),
              std::string::npos);

    library.wire.otherwise = test::DeviceAnswer(
        R"( {"other":1,"nFCCfg":{"readTimeout":30,"applicationId":"a\"b","enable":true,"unknown":[]}} )");
    protocol::NFCCfg read;
    EXPECT_TRUE(AcsParamConfig::getNFCConfigRequest(read, "d"));
    EXPECT_TRUE(read.enable);
    EXPECT_EQ(read.applicationId, "a\"b");
    EXPECT_EQ(read.readTimeout, 30);
}

TEST(PassThrough, ConditionsAndTimeoutsOfTheBuildingBlocks)
{
    test::Library library;
    library.wire.otherwise = test::DeviceAnswer(R"({"nFCCfg":{}})");
    protocol::NFCCfg nfc;
    for (const std::string& condition : {std::string(" 1,\"2\" "), std::string("\xF0\x9F\x94\x91")}) {
        const std::vector<std::function<bool()>> calls = {
            [&] { return DeviceGet(Route::External, 7, "d", nfc, condition, 1500); },
            [&] { return DeviceSet(Route::External, 7, "d", nfc, condition, 1500); },
            [&] { return DeviceCommand(Route::External, 7, "d", condition, 1500); },
        };
        for (const auto& call : calls) {
            EXPECT_TRUE(call());
            protocol::DagPassThroughReq request;
            ASSERT_TRUE(protocol::TParseJSONStr(request, library.wire.Last().body));
            EXPECT_EQ(request.condBuffer, condition);
            EXPECT_EQ(request.command, 7);
            EXPECT_EQ(library.wire.Last().timeoutMs, 1500);
        }
        EXPECT_EQ(library.wire.Last().body.find("nFCCfg"), std::string::npos); // a plain command has no input
    }
}

// ---- Batches ----

protocol::BatchPassThroughReq Batch()
{
    protocol::BatchPassThroughReq request;
    request.guid = "batch";
    request.flagGuid = "mark";
    request.getPreviousData = true;
    request.command = 2300;
    request.hasNext = true;
    protocol::CredCfgCond condition;
    condition.totalNum = 2;
    request.condBuffer = protocol::SerializeRequest(condition);
    request.maxResultNum = 50;
    request.batchSendDataList.resize(2);
    request.batchSendDataList[0].id = "1";
    request.batchSendDataList[0].inBuffer = "{}";
    request.batchSendDataList[1].inBufferEncoding = "base64";
    return request;
}

const std::string kBatchBody =
    "{\n\t\"batchPassThroughReq\":\t{\n\t\t\"guid\":\t\"batch\",\n\t\t\"flagGuid\":\t\"mark\",\n"
    "\t\t\"cancel\":\tfalse,\n\t\t\"getPreviousData\":\ttrue,\n\t\t\"command\":\t2300,\n\t\t\"hasNext\":\ttrue,\n"
    R"(		"condBuffer":	"{\n\t\"CredCfgCond\":\t{\n\t\t\"totalNum\":\t2,\n\t\t\"enableCardReader\":\tfalse\n\t}\n}",)"
    "\n\t\t\"condBufferEncoding\":\t\"\",\n\t\t\"maxResultNum\":\t50,\n"
    "\t\t\"batchSendDataList\":\t[{\n\t\t\t\t\"id\":\t\"1\",\n\t\t\t\t\"inBuffer\":\t\"{}\",\n"
    "\t\t\t\t\"inBufferEncoding\":\t\"\"\n\t\t\t}, {\n\t\t\t\t\"id\":\t\"\",\n\t\t\t\t\"inBuffer\":\t\"\",\n"
    "\t\t\t\t\"inBufferEncoding\":\t\"base64\"\n\t\t\t}]\n\t}\n}";

const std::string kBatchAnswer =
    R"({"code":"0-0","data":{"batchPassThroughRsp":{"guid":"batch","isFinish":true,"batchReturnDataList":[)"
    R"({"id":"1","code":0,"outBuffer":"o","outBufferEncoding":"base64"},)"
    R"({"id":"2","code":-3,"statusBuffer":"s","statusBufferEncoding":"plain"}]}}})";

void ExpectBatchAnswer(const protocol::BatchPassThroughRsp& page)
{
    EXPECT_EQ(page.guid, "batch");
    EXPECT_TRUE(page.isFinish);
    ASSERT_EQ(page.batchReturnDataList.size(), 2U);
    EXPECT_EQ(page.batchReturnDataList[0].id, "1");
    EXPECT_EQ(page.batchReturnDataList[0].outBuffer, "o");
    EXPECT_EQ(page.batchReturnDataList[0].outBufferEncoding, "base64");
    EXPECT_EQ(page.batchReturnDataList[1].code, -3);
    EXPECT_EQ(page.batchReturnDataList[1].statusBuffer, "s");
    EXPECT_EQ(page.batchReturnDataList[1].statusBufferEncoding, "plain");
}

TEST(PassThrough, BatchSteps)
{
    test::Library library;
    library.wire.otherwise = kBatchAnswer;
    for (const std::string& id : test::HostileIds()) {
        protocol::BatchPassThroughRspData response;
        std::string text = "before";
        EXPECT_TRUE(accessParamComm::batchPassThroughRequest(Batch(), id, response, text));
        EXPECT_EQ(library.wire.Last().url, "/7730/v1/internal/deviceManagement/devices/" + id + "/batchPassThrough");
        EXPECT_EQ(library.wire.Last().method, 2);
        EXPECT_EQ(library.wire.Last().body, kBatchBody);
        EXPECT_EQ(library.wire.Last().timeoutMs, 40000);
        ExpectBatchAnswer(response.batchPassThroughRsp);
        EXPECT_EQ(text, "before");

        protocol::BatchPassThroughRspData external;
        Keel::Error::ErrorCode error{1, 2, "before"};
        EXPECT_TRUE(accessParamComm::batchPassThroughRequestExternal(external, error, Batch(), id));
        EXPECT_EQ(library.wire.Last().url, "/7730/v1/deviceManagement/devices/" + id + "/batchPassThrough");
        EXPECT_EQ(library.wire.Last().method, 2);
        EXPECT_EQ(library.wire.Last().body, kBatchBody);
        ExpectBatchAnswer(external.batchPassThroughRsp);
        EXPECT_EQ(error.text, "before");
    }
}

TEST(PassThrough, BatchFailuresSayWhyAndNeverRepeatAnEarlierError)
{
    test::Library library;
    protocol::BatchPassThroughRspData response;
    response.batchPassThroughRsp.guid = "before";
    std::string text;
    Keel::Error::ErrorCode error;

    library.wire.Fail();
    EXPECT_FALSE(accessParamComm::batchPassThroughRequest(Batch(), "d", response, text));
    EXPECT_EQ(text, "stub transport failure");
    library.wire.Fail();
    EXPECT_FALSE(accessParamComm::batchPassThroughRequestExternal(response, error, Batch(), "d"));
    EXPECT_EQ(error.category, 7);
    EXPECT_EQ(error.number, 28);
    EXPECT_EQ(error.text, "stub transport failure");

    library.wire.AnswerWith("broken");
    Keel::Error::SetLastError({8, 9, "ninth"});
    EXPECT_FALSE(accessParamComm::batchPassThroughRequestExternal(response, error, Batch(), "d"));
    EXPECT_EQ(error.number, 0);
    EXPECT_EQ(error.text, "the answer was not readable");
    EXPECT_EQ(response.batchPassThroughRsp.guid, "before");
}

// ---- Structures behind untyped pointers ----

TEST(PassThrough, UntypedSettersAndTheRawGetter)
{
    test::Library library;
    protocol::NFCCfg nfc;
    nfc.readTimeout = 900;
    const std::string input = protocol::SerializeRequest(nfc);
    std::string text = "before";
    for (const std::string& id : test::HostileIds()) {
        const std::vector<std::pair<std::function<bool()>, std::string>> calls = {
            {[&] { return accessParamComm::setSchedule(4001, &nfc, id, text); }, input},
            {[&] { return accessParamComm::setSchedule(4001, nullptr, id, text); }, ""},
            {[&] { return ACDoorPlan::setDoorPlan(4001, &nfc, id, "ignored"); }, input},
            {[&] { return ACDoorPlan::setDoorPlan(4001, nullptr, id, ""); }, ""},
        };
        for (const auto& [call, expected] : calls) {
            EXPECT_TRUE(call());
            protocol::DagPassThroughReq request;
            ASSERT_TRUE(protocol::TParseJSONStr(request, library.wire.Last().body));
            EXPECT_EQ(library.wire.Last().url, test::With(test::kExternal, id));
            EXPECT_EQ(library.wire.Last().method, 2);
            EXPECT_EQ(request.command, 4001);
            EXPECT_EQ(request.condBuffer, "");
            EXPECT_EQ(request.inBuffer, expected);
        }
    }
    EXPECT_EQ(text, "before");
    library.wire.Fail();
    EXPECT_FALSE(accessParamComm::setSchedule(4001, &nfc, "d", text));
    EXPECT_EQ(text, "stub transport failure");
    library.wire.Fail();
    EXPECT_FALSE(ACDoorPlan::setDoorPlan(4001, &nfc, "d", ""));

    std::string output = "before";
    for (const std::string& body : {test::DeviceAnswer(""), std::string("broken"), std::string(R"({"code":"1-2"})")}) {
        library.wire.AnswerWith(body);
        EXPECT_FALSE(ACDoorPlan::getDoorStatusInfo(2007, output, "d", "ignored"));
        EXPECT_EQ(output, "before");
    }
    library.wire.AnswerWith(test::DeviceAnswer("not even JSON"));
    EXPECT_TRUE(ACDoorPlan::getDoorStatusInfo(2007, output, "d", "ignored"));
    EXPECT_EQ(output, "not even JSON");
    EXPECT_EQ(library.wire.Last().url, test::With(test::kExternal, "d"));
    EXPECT_EQ(library.wire.Last().body, "{\n\t\"dagPassThroughReq\":\t{\n\t\t\"command\":\t2007,\n"
                                        "\t\t\"condBuffer\":\t\"\",\n\t\t\"inBuffer\":\t\"\"\n\t}\n}");
}

} // namespace

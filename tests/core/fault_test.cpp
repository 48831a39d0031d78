// Every allocation of a call fails once: the call may fail, but nothing leaks, nothing is thrown at the caller, and a
// result is whole or untouched.

#include <cstdlib>
#include <functional>
#include <thread>

#include <cjson/cJSON.h>
#include <gtest/gtest.h>
#include <keel/Error.h>
#include <keel/Log.h>

#include "FailingAllocations.h"
#include "nexwire/AccessController/AccessGroup.h"
#include "nexwire/AccessController/EventCardLinkage.h"
#include "nexwire/AccessController/Wiegand.h"
#include "nexwire/DeviceParameters/AcsParam.h"
#include "nexwire/Nexwire.h"
#include "nexwire/ParseJSONUtil.h"
#include "nexwire/PassThrough/PassThrough.h"

namespace {

using namespace nexwire;

/// Answers by path; its own allocations never fail.
class Answering : public IRequestExecutor {
public:
    bool Execute(RspInfos& response, const RequestParams& request, int) override
    {
        const long left = test::g_left;
        test::g_left = -1;
        response.body = request.url.find("cryption") != std::string::npos
                            ? R"({"code":"0-0","data":{"ciphertextList":[{"ciphertext":"a long cipher text, really"},
                                 {"ciphertext":"b"},{"ciphertext":"c"}],"plaintextList":[{"plaintext":"1"},
                                 {"plaintext":"2"},{"plaintext":"a plain text that is not short"}]}})"
                            : answer;
        test::g_left = left;
        return true;
    }

    std::string answer;
};

/// What every call's answer holds: a bit for each of them, and texts too long to live inside a string object.
const char* const kAnswer = R"({"code":"0-0","msg":"a message that is longer than sixteen","data":{
    "wiegandQueryResultList":[{"guid":"a guid that is longer than sixteen","deviceGuidList":["d","e"],
        "outRuleList":[{"length":3}]},{"name":"second format, with a long name"}],
    "operationResultList":[{"guid":"a guid that is longer than sixteen","resultCode":3}],
    "accessGroupModifyResult":{"accessGroupGuid":"a guid that is longer than sixteen"},
    "dagPassThroughRsp":{"outBuffer":"{\"acsDoorParamCfg\":{\"doorName\":\"a door with a long name\",
        \"superPassword\":\"a cipher text of some length\"}}",
        "statusBuffer":"{\"returnRst\":{\"statusCode\":04,\"statusString\":\"what the device has to say of it\"}}"},
    "batchPassThroughRsp":{"guid":"a guid that is longer than sixteen","batchReturnDataList":[{"id":"1"}]}}})";

struct Case {
    const char* name;
    std::function<bool(std::string& shown)> call; ///< Runs once and shows what the caller then holds.
};

template <class Result>
Case Reading(const char* name, bool (*function)(Result&))
{
    return {name, [function](std::string& shown) {
                Result result;
                const bool success = function(result);
                test::g_left = -1;
                shown = protocol::StructureToJSON(result);
                return success;
            }};
}

TEST(Faults, EveryAllocationFailsOnceAndNothingIsHalfDone)
{
    Keel::details::LogConfig quiet;
    quiet.level = Keel::details::LogLevel::Off;
    Keel::CSingleton<Keel::details::CLog>::Instance().Configure(quiet);
    auto* const executor = new Answering;
    executor->answer = kAnswer;
    // A JSON text cannot hold the line breaks that make this one readable.
    for (std::size_t at = 0; (at = executor->answer.find('\n', at)) != std::string::npos;) {
        executor->answer.erase(at, 1);
    }
    NexwireInitParams params;
    params.executor = executor;
    ASSERT_TRUE(NexwireInit(params));
    cJSON_Hooks hooks = {test::FailingMalloc, std::free};
    cJSON_InitHooks(&hooks);

    static const std::string device = "a device GUID longer than sixteen";
    const Case cases[] = {
        Reading<protocol::WiegandQueryResultListData>("CGetWiegands", &CGetWiegands::request),
        Reading<protocol::OperationResultListData>(
            "CSetWiegand", [](auto& result) { return CSetWiegand::request(result, protocol::WiegandModifyParam()); }),
        Reading<protocol::AcsDoorParamCfg>(
            "getAcsDoorParamRequest",
            [](auto& result) { return AcsParamConfig::getAcsDoorParamRequest(result, device, 1); }),
        Reading<protocol::BatchPassThroughRspData>("batchPassThroughRequest",
                                                   [](auto& result) {
                                                       std::string error;
                                                       protocol::BatchPassThroughReq request;
                                                       return accessParamComm::batchPassThroughRequest(request, device,
                                                                                                       result, error);
                                                   }),
        Reading<protocol::ReturnRst>("requestSET",
                                     [](auto& result) { return EventCardLinkage::requestSET(result, {}, device, 1); }),
        {"addAccessGroup",
         [](std::string& shown) {
             shown.clear();
             int code = 0;
             protocol::AccessGroupAddParam param;
             return CAccessGroupComm::addAccessGroup(param, shown, code);
         }},
        {"modifyAccessGroupPersons",
         [](std::string&) {
             int code = 0;
             return CAccessGroupComm::modifyAccessGroupPersons({}, {}, device, code);
         }},
    };
    for (const Case& c : cases) {
        // The default and the full result, from calls that nothing disturbs.
        std::string untouched;
        std::string whole;
        executor->answer.swap(whole);
        EXPECT_FALSE(c.call(untouched)) << c.name;
        executor->answer.swap(whole);
        whole.clear();
        ASSERT_TRUE(c.call(whole)) << c.name;

        int failures = 0;
        test::g_failed = true;
        for (long n = 0; test::g_failed; ++n) {
            std::string shown;
            test::g_failed = false;
            test::g_left = n;
            const bool success = c.call(shown);
            test::g_left = -1;
            failures += success ? 0 : 1;
            EXPECT_TRUE(success || shown == untouched) << c.name << ", allocation " << n;
        }
        EXPECT_GT(failures, 2) << c.name;
    }
    cJSON_InitHooks(nullptr);
    NexwireUnInit();
}

#ifdef TEST_OWN_MALLOC
TEST(Faults, AThreadWithoutMemoryFailsItsFirstCallAndLivesOn)
{
    // What a thread uses for the first time registers its destruction, for which the system takes memory of its own.
    NexwireInitParams params;
    params.executor = new Answering;
    ASSERT_TRUE(NexwireInit(params));
    std::thread([] {
        test::g_mallocFails = true;
        protocol::WiegandQueryResultListData result;
        const bool success = CGetWiegands::request(result);
        Keel::Error::SetLastErrorJson("", 1, 2);
        const std::int32_t stored = Keel::Error::GetLastError().number;
        test::g_mallocFails = false;
        EXPECT_FALSE(success);
        EXPECT_EQ(stored, 0);
        Keel::Error::SetLastErrorJson("", 1, 2);
        EXPECT_EQ(Keel::Error::GetLastError().number, 2);
    }).join();
    NexwireUnInit();
}
#endif

} // namespace

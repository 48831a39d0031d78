// Requests for what the platform itself keeps: plans, verification modes, first persons, intercom logs, lift relays.

#include <gtest/gtest.h>

#include "accessplan/Vector.h"
#include "nexwire/AccessController/AccessPlan.h"
#include "nexwire/AccessController/FirstPerson.h"
#include "nexwire/AccessController/Intercom.h"
#include "nexwire/AccessController/LadderControlRelay.h"
#include "nexwire/AccessController/PictureCache.h"
#include "nexwire/AccessController/VerifyMode.h"

namespace {

using namespace nexwire;
using namespace test;

const std::string kRoot = "/7730/v1/accessController/";
const std::string kDetail = R"("detailInfo":{"validRange":{"beginDate":"2024-01-01","endDate":""},)"
                            R"("weekPlanList":[{"week":"Monday","enable":true,)"
                            R"("timeSegmentList":[{"beginTime":"08:00:00","endTime":"24:00:00"}]}],)"
                            R"("holidayPlanList":[{"holidayName":"h","dateRange":{"beginDate":"","endDate":""},)"
                            R"("timeSegmentList":[]}]})";
const std::string kOperation = R"({"guid":"g","resultCode":3,"resultMsg":"in use"})";
const std::string kCall = R"({"deviceType":4,"personGUID":"p","clearFlag":true,"guid":"g","deviceGuid":"d",)"
                          R"("deviceName":"Gate","roomNo":"1-1-1-101","callType":1,"callState":2,)"
                          R"("beginTime":1700000000123,"talkDuration":9})";
const std::string kNotice =
    R"({"guid":"","deviceGuid":"d","deviceName":"","operatorName":"o","sendTime":1700000000123,)"
    R"("sendState":0,"noticeInfo":{"noticeNumber":"7","noticeType":"alarm","noticeTitle":"t",)"
    R"("noticeContent":"c","noticeTime":"","roomList":["101"],"pictureUrlList":[]}})";
const std::string kRelay = R"("ladderControlRelay":{"relayNo":3,"moduleNo":0,"enable":true,"relayType":"auto",)"
                           R"("floorNo":-1,"floorName":"B1","openDuration":5,"openDelay":0})";

protocol::ACPlanDetailInfo Detail()
{
    protocol::ACPlanDetailInfo detail;
    detail.validRange.beginDate = "2024-01-01";
    protocol::DayPlan& monday = detail.weekPlanList.emplace_back();
    monday.week = "Monday";
    monday.enable = true;
    monday.timeSegmentList.emplace_back();
    monday.timeSegmentList[0].beginTime = "08:00:00";
    monday.timeSegmentList[0].endTime = "24:00:00";
    detail.holidayPlanList.emplace_back().holidayName = "h";
    return detail;
}

template <class Plan>
Plan PlanParam()
{
    Plan plan;
    plan.planInfoName = "n";
    plan.planInfoType = 2;
    plan.detailInfo = Detail();
    if constexpr (std::is_same_v<Plan, protocol::ACPlanInfoModifyParam>) {
        plan.description = "d";
    }
    return plan;
}

protocol::DialInfo Call()
{
    protocol::DialInfo call;
    call.deviceType = 4;
    call.personGUID = "p";
    call.clearFlag = true;
    call.guid = "g";
    call.deviceGuid = "d";
    call.deviceName = "Gate";
    call.roomNo = "1-1-1-101";
    call.callType = 1;
    call.callState = 2;
    call.beginTime = 1700000000123;
    call.talkDuration = 9;
    return call;
}

protocol::NoticeLog Notice()
{
    protocol::NoticeLog notice;
    notice.deviceGuid = "d";
    notice.operatorName = "o";
    notice.sendTime = 1700000000123;
    notice.noticeInfo.noticeNumber = "7";
    notice.noticeInfo.noticeType = "alarm";
    notice.noticeInfo.noticeTitle = "t";
    notice.noticeInfo.noticeContent = "c";
    notice.noticeInfo.roomList = {"101"};
    return notice;
}

protocol::LadderControlRelay Relay()
{
    protocol::LadderControlRelay relay;
    relay.relayNo = 3;
    relay.enable = true;
    relay.relayType = "auto";
    relay.floorNo = -1;
    relay.floorName = "B1";
    return relay;
}

protocol::LadderControlRelayReq Relays()
{
    protocol::LadderControlRelayReq relays;
    relays.guidList = {"g"};
    relays.deviceGuidList = {"d"};
    return relays;
}

std::vector<Vector> PlanVectors()
{
    const std::string plan = R"("planInfoName":"n","planInfoType":2,)" + kDetail;
    return {
        Reading<protocol::ACBasicPlanInfoResponseListData>(
            "getAllBasicPlans", kRoot + "allBasicPlanInfos", 2, R"({"basicPlanQueryCondition":{"planInfoType":2}})",
            R"({"basicPlanInfoResponseList":[{"planInfoGuid":"g","planInfoName":"n","planInfoType":2,)"
            R"("description":"d","isUsed":true}]})",
            [](auto& result, auto&) {
                protocol::ACBasicPlanQueryCondition condition;
                condition.planInfoType = 2;
                return ACPlanTemplate::getAllBasicPlans(result, condition);
            }),
        Reading<protocol::ACPlanInfoAddedReturnData>(
            "addPlans", kRoot + "planInfos", 1, R"({"planInfoAddParam":{)" + plan + "}}",
            R"({"planInfoAddedReturn":{"planInfoGuid":"g","planInfoName":"n"}})",
            [](auto& result, auto&) {
                return ACPlanTemplate::addPlans(result, PlanParam<protocol::ACPlanInfoAddParam>());
            }),
        Reading<protocol::ACPlanInfoRemoveResultListData>("deletePlans", kRoot + "planInfos", 3,
                                                          R"({"planInfoRemoveParam":{"planInfoGuidList":["a","b"]}})",
                                                          R"({"planInfoRemoveResultList":[)" + kOperation + "]}",
                                                          [](auto& result, auto&) {
                                                              protocol::ACPlanInfoRemoveParam param;
                                                              param.planInfoGuidList = {"a", "b"};
                                                              return ACPlanTemplate::deletePlans(result, param);
                                                          }),
        Reading<protocol::ACSinglePlanQueryResultData>(
            "getPlan", kRoot + "planInfos/*", 2, R"({"singlePlanQuery":{"planInfoType":2,"needDetailInfo":true}})",
            R"({"singlePlanQueryResult":{"planInfoGuid":"g",)" + plan + R"(,"description":"d","modifyTime":1700000000123}})",
            [](auto& result, auto& id) {
                protocol::ACSinglePlanQuery query;
                query.planInfoType = 2;
                return ACPlanTemplate::getPlan(result, query, id);
            }),
        Reading<protocol::ACPlanInfoModifyResultData>(
            "modifyPlan", kRoot + "planInfos/*", 1, R"({"planInfoModifyParam":{)" + plan + R"(,"description":"d"}})",
            R"({"planInfoModifyResult":{"planInfoGuid":"g","planInfoName":"n","accessGroupGuidList":["a"]}})",
            [](auto& result, auto& id) {
                return ACPlanTemplate::modifyPlan(result, PlanParam<protocol::ACPlanInfoModifyParam>(), id);
            }),
        Reading<protocol::AccessGroupGuidsListData>(
            "getAccessGroupGuids", kRoot + "planUsedAccessGroup/*", 0, "", R"({"accessGroupGuidsList":["a","b"]})",
            [](auto& result, auto& id) { return ACPlanTemplate::getAccessGroupGuids(result, id); }),
    };
}

std::vector<Vector> PersonVectors()
{
    return {
        Reading<protocol::SetVerifyModeRspData>(
            "CPersonnelVerify::request", kRoot + "personnelVerifyMode/devices/*", 1,
            R"({"setVerifyModeReq":{"operateType":1,"personnelVerifyModeSetList":[{"personnelGuid":"p",)"
            R"("personnelNo":"","personnelName":"","userVerifyMode":5}]}})",
            R"({"setVerifyModeRsp":{"deviceGuid":"d","operationResultList":[)" + kOperation + "]}}",
            [](auto& result, auto& id) {
                protocol::SetVerifyModeReq param;
                param.operateType = 1;
                protocol::PersonnelVerifyModeSet& person = param.personnelVerifyModeSetList.emplace_back();
                person.personnelGuid = "p";
                person.userVerifyMode = 5;
                return CPersonnelVerify::request(id, param, result);
            }),
        Reading<protocol::PersonnelVerifyModeRspData>(
            "CGetPersonnelVerify::request", kRoot + "personnelVerifyMode/devices/*", 2,
            R"({"personnelVerifyModeCondition":{"isQuery":true,"personnelVerifyModeFilterCondition":{)"
            R"("verifyModeList":[1,5],"downStatus":-1,"personnelName":"","personnelNo":""}}})",
            R"({"personnelVerifyModeRsp":{"deviceGuid":"d","verifyModeList":[{"personnelGuid":"p","personnelNo":"1",)"
            R"("personnelName":"n","userVerifyMode":5,"downStatus":2,"errorCode":7,"errorMsg":"e"}]}})",
            [](auto& result, auto& id) {
                protocol::PersonnelVerifyModeCondition condition;
                condition.isQuery = true;
                condition.personnelVerifyModeFilterCondition.verifyModeList = {1, 5};
                return CGetPersonnelVerify::request(id, condition, result);
            }),
        Reading<protocol::PersonnelVerifyValuesData>(
            "CGetPersonnelVerify::requestValues", kRoot + "personnelVerifyModeCount/devices/*", 2, "",
            R"({"personnelVerifyValues":{"deviceGuid":"d","totalNum":3,)"
            R"("verifyModeCountList":[{"userVerifyMode":5,"personnelNum":3}]}})",
            [](auto& result, auto& id) { return CGetPersonnelVerify::requestValues(id, result); }),
        Reading<protocol::FirstPersonAddReturnListData>(
            "addDatas", kRoot + "firstPersonInfos", 1,
            R"({"firstPersonAddParam":{"firstPersonParamList":[{"deviceGuid":"d","doorGuid":"o","doorNo":1,)"
            R"("personnelGuid":"p","personnelNo":"","personnelName":""}]}})",
            R"({"firstPersonAddReturnList":[{"guid":"g","doorGuid":"o","personnelGuid":"p","resultCode":0,)"
            R"("resultMsg":""}]})",
            [](auto& result, auto&) {
                protocol::FirstPersonAddParam param;
                protocol::FirstPersonParam& person = param.firstPersonParamList.emplace_back();
                person.deviceGuid = "d";
                person.doorGuid = "o";
                person.doorNo = 1;
                person.personnelGuid = "p";
                return FirstPersonOpenDoor::addDatas(param, result);
            }),
        Reading<protocol::FirstPersonRemoveResultListData>("deleteDatas", kRoot + "firstPersonInfos", 3,
                                                           R"({"firstPersonRemoveList":{"guidList":["a"]}})",
                                                           R"({"firstPersonRemoveResultList":[)" + kOperation + "]}",
                                                           [](auto& result, auto&) {
                                                               protocol::FirstPersonRemoveList param;
                                                               param.guidList = {"a"};
                                                               return FirstPersonOpenDoor::deleteDatas(param, result);
                                                           }),
        Reading<protocol::FirstPersonQueryResultRspData>(
            "queryDatas", kRoot + "firstPersonInfos/*", 2,
            R"({"firstPersonCondition":{"isQuery":true,"firstPersonFilterCondition":{"downStatus":2,)"
            R"("personnelName":"","personnelNo":""}}})",
            R"({"firstPersonQueryResultRsp":{"doorGuid":"o","firstPersonInfoList":[{"guid":"g","deviceGuid":"d",)"
            R"("doorGuid":"o","doorNo":1,"personnelGuid":"p","personnelNo":"1","personnelName":"n","downStatus":2,)"
            R"("errorCode":0,"errorMsg":""}]}})",
            [](auto& result, auto& id) {
                protocol::FirstPersonCondition condition;
                condition.isQuery = true;
                condition.firstPersonFilterCondition.downStatus = 2;
                return FirstPersonOpenDoor::queryDatas(id, condition, result);
            }),
    };
}

std::vector<Vector> IntercomVectors()
{
    const std::string page = R"("total":21,"pageNo":2,"pageSize":20,)";
    return {
        Reading<protocol::DailInfosResponseDataData>(
            "getDialLogs", kRoot + "interCom/dailInfos", 2,
            R"({"dailInfosGet":{"pageNo":2,"pageSize":20,"personGUID":"p","deviceGuid":"","deviceType":-1,)"
            R"("callState":0,"beginTime":1700000000123,"endTime":0}})",
            R"({"dailInfosResponseData":{)" + page + R"("dailInfos":[)" + kCall + "]}}",
            [](auto& result, auto&) {
                protocol::DailInfosGet condition;
                condition.pageNo = 2;
                condition.pageSize = 20;
                condition.personGUID = "p";
                condition.callState = 0;
                condition.beginTime = 1700000000123;
                return DialLogComm::getDialLogs(condition, result);
            }),
        Reading<protocol::DialInfoResultData>("addDialLog", kRoot + "interCom/dailInfos", 1,
                                              R"({"dailInfosAdd":{"dailInfos":[)" + kCall + "]}}",
                                              R"({"dialInfoResult":{"operationResultList":[)" + kOperation + "]}}",
                                              [](auto& result, auto&) {
                                                  protocol::DialInfoAdd param;
                                                  param.dailInfos = {Call()};
                                                  return DialLogComm::addDialLog(param, result);
                                              }),
        Reading<protocol::DialInfoResultData>("deleteDialLogs", kRoot + "interCom/dailInfos", 3,
                                              R"({"dailInfosDelete":{"guidList":["a","b"]}})",
                                              R"({"dialInfoResult":{"operationResultList":[)" + kOperation + "]}}",
                                              [](auto& result, auto&) {
                                                  protocol::DialInfoDelete param;
                                                  param.guidList = {"a", "b"};
                                                  return DialLogComm::deleteDialLogs(param, result);
                                              }),
        Reading<protocol::NoticeInfosResponseDataData>(
            "getNoticeLogs", kRoot + "interCom/noticeLogs", 2,
            R"({"noticeGet":{"pageNo":1,"pageSize":0,"deviceGuid":"","noticeType":"alarm","keyword":"k",)"
            R"("beginTime":0,"endTime":0}})",
            R"({"noticeInfosResponseData":{)" + page + R"("noticeLogList":[)" + kNotice + "]}}",
            [](auto& result, auto&) {
                protocol::NoticeGet condition;
                condition.noticeType = "alarm";
                condition.keyword = "k";
                return NoticeLogComm::getNoticeLogs(condition, result);
            }),
        Reading<protocol::NoticeInfoResultData>("addNoticeLog", kRoot + "interCom/noticeLogs", 1,
                                                R"({"noticeAdd":{"noticeLogList":[)" + kNotice + "]}}",
                                                R"({"noticeReturnData":{"operationResultList":[)" + kOperation + "]}}",
                                                [](auto& result, auto&) {
                                                    protocol::NoticeInfoAdd param;
                                                    param.noticeLogList = {Notice()};
                                                    return NoticeLogComm::addNoticeLog(param, result);
                                                }),
        Reading<protocol::NoticeInfoResultData>("deleteNoticeLogs", kRoot + "interCom/noticeLogs", 3,
                                                R"({"noticeDelete":{"guidList":["a"]}})",
                                                R"({"noticeReturnData":{"operationResultList":[)" + kOperation + "]}}",
                                                [](auto& result, auto&) {
                                                    protocol::NoticeInfoDelete param;
                                                    param.guidList = {"a"};
                                                    return NoticeLogComm::deleteNoticeLogs(param, result);
                                                }),
    };
}

std::vector<Vector> RelayVectors()
{
    const std::string which = R"({"ladderControlRelayReq":{"guidList":["g"],"deviceGuidList":["d"]}})";
    const auto output = std::make_shared<std::string>();
    return {
        Reading<protocol::LadderControlRelaydQueryResultListData>(
            "getAllLadderControlRelays", kRoot + "ladderControlRelayFromDB", 2, which,
            R"({"ladderControlRelaydQueryResultList":[{"guid":"g","deviceGuid":"d","deviceName":"Lift","name":"n",)" +
                kRelay + R"(,"modifyTime":1700000000123}]})",
            [](auto& result, auto&) { return LadderControlRelaySession::getAllLadderControlRelays(Relays(), result); }),
        Reading<protocol::AddLadderControlRelayResultRspData>(
            "addLadderControlRelays", kRoot + "ladderControlRelayFromDB", 1,
            R"({"addLadderControlRelayReq":{"addladderControlRelayList":[{"deviceGuid":"d","name":"n",)" + kRelay +
                "}]}}",
            R"({"addLadderControlRelayResultRsp":{"addLadderControlRelayResultList":[{"guid":"g","deviceGuid":"d",)"
            R"("relayNo":3,"resultCode":0,"resultMsg":""}]}})",
            [](auto& result, auto&) {
                protocol::AddLadderControlRelayReq param;
                protocol::LadderControlRelayAdd& relay = param.addladderControlRelayList.emplace_back();
                relay.deviceGuid = "d";
                relay.name = "n";
                relay.ladderControlRelay = Relay();
                return LadderControlRelaySession::addLadderControlRelays(param, result);
            }),
        {"deleteLadderControlRelays", kRoot + "ladderControlRelayFromDB", 3, which, "",
         [](auto&) { return LadderControlRelaySession::deleteLadderControlRelays(Relays()); }},
        {"modifyLadderControlRelays", kRoot + "ladderControlRelayFromDB/*", 1,
         R"({"modifyladderControlRelayReq":{"guid":"*","name":"n",)" + kRelay + "}}",
         R"({"modifyladderControlRelayResult":{"guid":"changed","name":"n"}})",
         [output](auto& id) {
             protocol::ModifyladderControlRelayReq param;
             param.guid = id;
             param.name = "n";
             param.ladderControlRelay = Relay();
             return LadderControlRelaySession::modifyLadderControlRelays(param, *output);
         },
         [output] { return R"({"modifyladderControlRelayResult":{"guid":")" + *output + R"(","name":"n"}})"; }},
        {"CClearDAGPictureCache::request", "/7730/v1/internal/deviceManagement/clearPictureCache", 1, "", "",
         [](auto&) { return CClearDAGPictureCache::request(); }},
    };
}

std::vector<Vector> Vectors()
{
    std::vector<Vector> all;
    for (const auto& family : {PlanVectors, PersonVectors, IntercomVectors, RelayVectors}) {
        for (Vector& vector : family()) {
            all.push_back(std::move(vector));
        }
    }
    return all;
}

TEST(PlatformRecords, EachFunctionSendsItsRequest)
{
    for (const Vector& vector : Vectors()) {
        for (const std::string& id : HostileIds()) {
            SCOPED_TRACE(vector.name + " with \"" + id + "\"");
            Library library;
            EXPECT_TRUE(vector.call(id));
            ASSERT_EQ(library.wire.requests.size(), 1u);
            const RequestParams& request = library.wire.Last();
            EXPECT_EQ(request.url, With(vector.where, id));
            EXPECT_EQ(request.method, vector.code);
            EXPECT_EQ(Compact(request.body), With(vector.body, id));
            EXPECT_EQ(request.body.empty(), vector.body.empty());
            EXPECT_EQ(request.timeoutMs, RequestParams::kDefaultTimeoutMs);
            EXPECT_TRUE(request.headers.empty());
            EXPECT_TRUE(request.params.empty());
        }
    }
}

TEST(PlatformRecords, AnswersFillResultsAndFailuresLeaveThem)
{
    for (const Vector& vector : Vectors()) {
        SCOPED_TRACE(vector.name);
        Library library;
        const std::string data = vector.answer.empty() ? "null" : vector.answer;
        const std::string before = vector.held();

        library.wire.Fail();
        EXPECT_FALSE(vector.call("id"));
        EXPECT_EQ(vector.held(), before);

        // A refusal with data is still an answer.
        library.wire.AnswerWith(R"({"code":"2-17","msg":"partly","data":)" + data + "}");
        EXPECT_TRUE(vector.call("id"));
        EXPECT_EQ(vector.held(), vector.answer);

        for (const char* const broken : {"", "<html>", R"({"code":"0-0","data":{}}<html>)"}) {
            library.wire.AnswerWith(broken);
            EXPECT_FALSE(vector.call("id")) << broken;
            EXPECT_EQ(vector.held(), vector.answer) << broken;
        }
    }
}

TEST(PlatformRecords, NothingIsSentWithoutTheLibraryStarted)
{
    for (const Vector& vector : Vectors()) {
        EXPECT_FALSE(vector.call("id")) << vector.name;
    }
}

} // namespace

#include <functional>

#include <gtest/gtest.h>

#include "nexwire/AccessController/AccessGroup.h"
#include "nexwire/AccessController/Wiegand.h"
#include "support/RequestVectors.h"

namespace {

using namespace nexwire;
using protocol::PersonnelAdd;
using test::RequestVector;

const std::string kRoot = "/7730/v1/accessController/";
const std::string kInternal = "/7730/v1/internal/accessController/";

/// A row for `call(id)`.
RequestVector Row(const char* name, std::function<bool(const std::string&)> call, const std::string& path, int method,
                  const std::string& body)
{
    return {name, path, method, body, "", std::move(call), nullptr, ""};
}

protocol::DeviceDownloadDetailsCont Condition()
{
    protocol::DeviceDownloadDetailsCont condition;
    condition.detailsQueryCondition.deviceGuid = "d";
    condition.detailsQueryCondition.groupGuid = "g";
    condition.isQuery = true;
    condition.detailsFilterCondition.personName = "n";
    condition.detailsFilterCondition.downloadState = 2;
    return condition;
}

const std::string kConditionBody = R"({"deviceDownloadDetailsCont":{
    "DetailsQueryCondition":{"deviceGuid":"d","groupGuid":"g"},"isQuery":true,
    "DetailsFilterCondition":{"personName":"n","personGuid":"","sessionID":"","downloadState":2}}})";

std::vector<RequestVector> Vectors()
{
    static int code;
    static std::string guid;
    const auto modify = [](const std::string& inner) { return "{\"accessGroupModifyParam\":{" + inner + "}}"; };
    return {
        Row(
            "queryAccessGroups",
            [](auto&) {
                protocol::AccessGroupQueryResponseListData result;
                return CAccessGroupComm::queryAccessGroups(result);
            },
            kRoot + "accessGroups", 2, ""),
        Row(
            "getAccessGroup",
            [](auto& id) {
                protocol::AccessGroupQueryResponseData result;
                return CAccessGroupComm::getAccessGroup(result, id);
            },
            kRoot + "accessGroups/*", 2, ""),
        Row(
            "addAccessGroup",
            [](auto&) {
                protocol::AccessGroupAddParam param;
                param.name = "n";
                param.secheduleGuid = "s";
                param.personnelAddList.resize(1);
                param.personnelAddList[0].personnelNo = "7";
                param.objectAddList.resize(1);
                param.objectAddList[0].objectNo = 1;
                return CAccessGroupComm::addAccessGroup(param, guid, code);
            },
            kRoot + "accessGroups", 1,
            R"({"accessGroupAddParam":{"name":"n","secheduleGuid":"s","description":"",
                "personnelAddList":[{"personnelGuid":"","personnelNo":"7","personnelName":""}],
                "objectAddList":[{"deviceGuid":"","objectGuid":"","objectGroupGuid":"","objectName":"","objectNo":1,
                "objectType":0}]}})"),
        Row(
            "downloadAccessGroups",
            [](auto&) {
                return CAccessGroupComm::downloadAccessGroups({"a", "b"}, true, 3);
            },
            kRoot + "accessDownload", 1,
            R"({"accessDownload":{"accessGroupDownList":[{"accessgroupGuid":"a","deleteGroup":true,
                "downloadMode":3},{"accessgroupGuid":"b","deleteGroup":true,"downloadMode":3}]}})"),
        Row(
            "downloadAccessGroups of none", [](auto&) { return CAccessGroupComm::downloadAccessGroups({}, false, 0); },
            kRoot + "accessDownload", 1, R"({"accessDownload":{"accessGroupDownList":[]}})"),
        Row(
            "modifyAccessGroupName", [](auto& id) { return CAccessGroupComm::modifyAccessGroupName(id, "new", code); },
            kRoot + "accessGroups/*", 1, modify(R"("name":"new")")),
        Row(
            "modifyAccessGroupSchedule",
            [](auto& id) { return CAccessGroupComm::modifyAccessGroupSchedule(id, "s", code); },
            kRoot + "accessGroups/*", 1, modify(R"("secheduleGuid":"s")")),
        Row(
            "modifyAccessGroupDescription",
            [](auto& id) { return CAccessGroupComm::modifyAccessGroupDescription(id, "d"); }, kRoot + "accessGroups/*",
            1, modify(R"("description":"d")")),
        Row(
            "modifyAccessGroupPersons",
            [](auto& id) {
                std::vector<PersonnelAdd> added(1);
                added[0].personnelGuid = "p";
                return CAccessGroupComm::modifyAccessGroupPersons(added, {}, id, code);
            },
            kRoot + "accessGroups/*", 1,
            modify(
                R"("personnelAddList":[{"personnelGuid":"p","personnelNo":"","personnelName":""}],"personnelRemoveList":[])")),
        Row(
            "modifyAccessGroupObjects",
            [](auto& id) {
                std::vector<protocol::ObjectRemove> removed(1);
                removed[0].objectGuid = "o";
                return CAccessGroupComm::modifyAccessGroupObjects({}, removed, id, code);
            },
            kRoot + "accessGroups/*", 1,
            modify(R"("objectAddList":[],"objectRemoveList":[{"deviceGuid":"","objectGuid":"o"}])")),
        Row(
            "modifyFaceStatus", [](auto& id) { return CAccessGroupComm::modifyFaceStatusByDeviceGuid(id); },
            kRoot + "modifyfacestatus/*", 1, ""),
        Row(
            "modifyIrisStatus", [](auto& id) { return CAccessGroupComm::modifyIrisStatusByDeviceGuid(id); },
            kRoot + "modifyirisstatus/*", 1, ""),
        Row(
            "getAccessGroupDownloadProgress",
            [](auto& id) {
                protocol::GroupDownloadProgressData result;
                return CAccessGroupComm::getAccessGroupDownloadProgress(result, id);
            },
            kRoot + "downloadProgress/*", 2, ""),
        Row(
            "queryDeviceDownloadDetails",
            [](auto&) {
                protocol::DeviceDownloadDetailsResponseData result;
                return CAccessGroupComm::queryDeviceDownloadDetails(result, Condition());
            },
            kRoot + "downloadDetails", 2, kConditionBody),
        Row(
            "queryDownloadPersonStateDetails",
            [](auto&) {
                protocol::PersonStateDetailResponseData result;
                return CAccessGroupComm::queryDownloadPersonStateDetails(result, Condition());
            },
            kRoot + "personStateDetails", 2, kConditionBody),
        Row(
            "checkAccessParam",
            [](auto&) {
                protocol::AccessParamCheck param;
                param.scheduleGuid = "s";
                param.doorGuidList = {"door"};
                return CAccessGroupComm::checkAccessParam(param, code);
            },
            kRoot + "accessParamCheck", 2,
            R"({"accessParamCheck":{"accessGroupGuid":"","scheduleGuid":"s","doorGuidList":["door"],
                "personGuidList":[]}})"),
        Row(
            "checkAccessParamForCertainGroups",
            [](auto&) {
                protocol::AccessParamCheckForCertainGroups param;
                param.accessGroupGuidList = {"g"};
                return CAccessGroupComm::checkAccessParamForCertainGroups(param, code);
            },
            kRoot + "accessParamCheckForCertainAccessGroups", 2,
            R"({"accessParamCheckForCertainGroups":{"accessGroupGuidList":["g"],"scheduleGuid":"","doorGuidList":[],
                "personGuidList":[]}})"),
        Row(
            "AccessGroupStatusChange",
            [](auto&) { return AccessGroupStatusChange::request(protocol::AccessGroupStatusChange()); },
            kInternal + "accessGroupStatusChange", 1,
            R"({"accessGroupStatusChange":{"accessGroupGuidList":[],"accessGroupState":0}})"),
        Row(
            "AccessGroupStatusDownload",
            [](auto&) { return AccessGroupStatusDownload::request(protocol::AccessGroupStatusDownload()); },
            kInternal + "accessGroupStatusDownload", 1,
            R"({"accessGroupStatusDownload":{"accessGroupGuid":"","deviceGuid":"","deviceProgress":0,
                "downloadState":0}})"),
        Row(
            "getDownloadedPerson",
            [](auto& id) {
                protocol::DownloadedPersonData result;
                return personDownloadedComm::getDownloadedPerson(result, id);
            },
            kRoot + "downloadPersons/*", 2, ""),
        Row(
            "getDownloadedCard",
            [](auto& id) {
                protocol::DownloadedCardListData result;
                return personDownloadedComm::getDownloadedCard(result, id);
            },
            kRoot + "downloadedCards/*", 2, ""),
        Row(
            "CStopApplyPerGroup", [](auto& id) { return CStopApplyPerGroup::request(id); }, kRoot + "stopDownload/*", 1,
            ""),
        Row(
            "CReApplyFailedInfo", [](auto& id) { return CReApplyFailedInfo::request(id); }, kRoot + "reDownload/*", 1,
            ""),
        Row(
            "CGetWiegands",
            [](auto&) {
                protocol::WiegandQueryResultListData result;
                return CGetWiegands::request(result);
            },
            kRoot + "wiegands", 2, ""),
        Row(
            "CSetWiegand",
            [](auto&) {
                protocol::OperationResultListData result;
                protocol::WiegandModifyParam param;
                param.guid = "w";
                param.enabled = true;
                param.deviceGuidList = {"d"};
                return CSetWiegand::request(result, param);
            },
            kRoot + "wiegands", 1,
            R"({"wiegandModifyParam":{"guid":"w","name":"","enabled":true,"totalLength":0,"checkType":0,
                "oddBeginBit":0,"oddLength":0,"evenBeginBit":0,"evenLength":0,"xorBeginBit":0,"xorPerLength":0,
                "xorTotalLength":0,"deviceGuidList":["d"],"outRuleList":[]}})"),
    };
}

TEST(AccessGroup, RequestVectors)
{
    test::CheckRequests(Vectors());
}

TEST(AccessGroup, CreationHandsOutTheGuidOnlyOnSuccess)
{
    test::Library library;
    std::string guid = "before";
    int code = -1;
    for (const char* body :
         {R"({"code":"6-3","data":{"accessGroupModifyResult":{"accessGroupGuid":"no"}}})", "broken"}) {
        library.wire.AnswerWith(body);
        EXPECT_FALSE(CAccessGroupComm::addAccessGroup({}, guid, code));
        EXPECT_EQ(guid, "before");
        EXPECT_EQ(code, 3);
    }
    EXPECT_EQ(Keel::Error::GetLastError().category, 6);
    library.wire.AnswerWith(
        R"({"code":"0-0","data":{"accessGroupModifyResult":{"name":"n","accessGroupGuid":"new","accessGroupState":1}}})");
    EXPECT_TRUE(CAccessGroupComm::addAccessGroup({}, guid, code));
    EXPECT_EQ(guid, "new");
    EXPECT_EQ(code, 0);
}

TEST(AccessGroup, ChangesAndChecksAreJudgedQueriesAreNot)
{
    test::Library library;
    const std::string refused = R"({"code":"6-3","msg":"in use"})";
    library.wire.otherwise = refused;
    int code = -1;
    EXPECT_FALSE(CAccessGroupComm::modifyAccessGroupName("g", "n", code));
    EXPECT_EQ(code, 3);
    EXPECT_FALSE(CAccessGroupComm::modifyAccessGroupDescription("g", "d"));
    EXPECT_FALSE(CAccessGroupComm::checkAccessParam({}, code));
    EXPECT_TRUE(CAccessGroupComm::downloadAccessGroups({"g"}, false, 0));
    protocol::AccessGroupQueryResponseListData groups;
    EXPECT_TRUE(CAccessGroupComm::queryAccessGroups(groups));
    library.wire.otherwise.clear();
    EXPECT_TRUE(CAccessGroupComm::modifyFaceStatusByDeviceGuid("d"));
    EXPECT_FALSE(CStopApplyPerGroup::request("g"));
}

TEST(AccessGroup, ResultsReadTheirOddlySpelledKeys)
{
    test::Library library;
    library.wire.AnswerWith(R"({"code":"0-0","data":{"accessGroupQueryResponseList":[{"name":"n","secheduleGuid":"s",
        "scheduleGuid":"no","accessGroupState":2,"personnelResList":[{"personnelGuid":"p"}],
        "objectResList":[{"objectGuid":"o","objectNo":4}]}]}})");
    protocol::AccessGroupQueryResponseListData groups;
    ASSERT_TRUE(CAccessGroupComm::queryAccessGroups(groups));
    const auto& group = groups.accessGroupQueryResponseList.at(0);
    EXPECT_EQ(group.secheduleGuid, "s");
    EXPECT_EQ(group.personnelResList.at(0).personnelGuid, "p");
    EXPECT_EQ(group.objectResList.at(0).objectNo, 4);

    library.wire.AnswerWith(R"({"code":"0-0","data":{"groupProgress":40,"accessGroupState":1,
        "deviceDownloadProgressList":[{"deviceGuid":"d","deviceProgress":80,"downloadState":3}]}})");
    protocol::GroupDownloadProgressData progress;
    ASSERT_TRUE(CAccessGroupComm::getAccessGroupDownloadProgress(progress, "g"));
    EXPECT_EQ(progress.groupProgress, 40);
    EXPECT_EQ(progress.deviceDownloadProgressList.at(0).deviceProgress, 80);
}

} // namespace

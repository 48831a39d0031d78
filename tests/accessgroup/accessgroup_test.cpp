#include <functional>

#include <gtest/gtest.h>

#include "nexwire/AccessGroup.h"
#include "nexwire/Wiegand.h"
#include "support/StubExecutor.h"

namespace {

using namespace nexwire;
using protocol::PersonnelAdd;

const std::string kRoot = "/7730/v1/accessController/";
const std::string kInternal = "/7730/v1/internal/accessController/";

/// One request function with an identifier, and what must reach the executor for it.
struct Vector {
    const char* name;
    std::function<bool(const std::string&)> call;
    std::string path; ///< "*" stands for the identifier.
    std::int32_t method;
    std::string body;
};

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

const std::string kConditionBody =
    "{\n\t\"deviceDownloadDetailsCont\":\t{\n"
    "\t\t\"DetailsQueryCondition\":\t{\n\t\t\t\"deviceGuid\":\t\"d\",\n\t\t\t\"groupGuid\":\t\"g\"\n\t\t},\n"
    "\t\t\"isQuery\":\ttrue,\n"
    "\t\t\"DetailsFilterCondition\":\t{\n\t\t\t\"personName\":\t\"n\",\n\t\t\t\"personGuid\":\t\"\",\n"
    "\t\t\t\"sessionID\":\t\"\",\n\t\t\t\"downloadState\":\t2\n\t\t}\n\t}\n}";

std::vector<Vector> Vectors()
{
    static int code;
    static std::string guid;
    const auto modify = [](const std::string& inner) {
        return "{\n\t\"accessGroupModifyParam\":\t{\n\t\t" + inner + "\n\t}\n}";
    };
    return {
        {"queryAccessGroups",
         [](auto&) {
             protocol::AccessGroupQueryResponseListData result;
             return CAccessGroupComm::queryAccessGroups(result);
         },
         kRoot + "accessGroups", 2, ""},
        {"getAccessGroup",
         [](auto& id) {
             protocol::AccessGroupQueryResponseData result;
             return CAccessGroupComm::getAccessGroup(result, id);
         },
         kRoot + "accessGroups/*", 2, ""},
        {"addAccessGroup",
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
         "{\n\t\"accessGroupAddParam\":\t{\n\t\t\"name\":\t\"n\",\n\t\t\"secheduleGuid\":\t\"s\",\n"
         "\t\t\"description\":\t\"\",\n"
         "\t\t\"personnelAddList\":\t[{\n\t\t\t\t\"personnelGuid\":\t\"\",\n\t\t\t\t\"personnelNo\":\t\"7\",\n"
         "\t\t\t\t\"personnelName\":\t\"\"\n\t\t\t}],\n"
         "\t\t\"objectAddList\":\t[{\n\t\t\t\t\"deviceGuid\":\t\"\",\n\t\t\t\t\"objectGuid\":\t\"\",\n"
         "\t\t\t\t\"objectGroupGuid\":\t\"\",\n\t\t\t\t\"objectName\":\t\"\",\n\t\t\t\t\"objectNo\":\t1,\n"
         "\t\t\t\t\"objectType\":\t0\n\t\t\t}]\n\t}\n}"},
        {"downloadAccessGroups",
         [](auto&) {
             return CAccessGroupComm::downloadAccessGroups({"a", "b"}, true, 3);
         },
         kRoot + "accessDownload", 1,
         "{\n\t\"accessDownload\":\t{\n\t\t\"accessGroupDownList\":\t[{\n"
         "\t\t\t\t\"accessgroupGuid\":\t\"a\",\n\t\t\t\t\"deleteGroup\":\ttrue,\n\t\t\t\t\"downloadMode\":\t3\n"
         "\t\t\t}, {\n"
         "\t\t\t\t\"accessgroupGuid\":\t\"b\",\n\t\t\t\t\"deleteGroup\":\ttrue,\n\t\t\t\t\"downloadMode\":\t3\n"
         "\t\t\t}]\n\t}\n}"},
        {"downloadAccessGroups of none", [](auto&) { return CAccessGroupComm::downloadAccessGroups({}, false, 0); },
         kRoot + "accessDownload", 1, "{\n\t\"accessDownload\":\t{\n\t\t\"accessGroupDownList\":\t[]\n\t}\n}"},
        {"modifyAccessGroupName", [](auto& id) { return CAccessGroupComm::modifyAccessGroupName(id, "new", code); },
         kRoot + "accessGroups/*", 1, modify("\"name\":\t\"new\"")},
        {"modifyAccessGroupSchedule",
         [](auto& id) { return CAccessGroupComm::modifyAccessGroupSchedule(id, "s", code); }, kRoot + "accessGroups/*",
         1, modify("\"secheduleGuid\":\t\"s\"")},
        {"modifyAccessGroupDescription",
         [](auto& id) { return CAccessGroupComm::modifyAccessGroupDescription(id, "d"); }, kRoot + "accessGroups/*", 1,
         modify("\"description\":\t\"d\"")},
        {"modifyAccessGroupPersons",
         [](auto& id) {
             std::vector<PersonnelAdd> added(1);
             added[0].personnelGuid = "p";
             return CAccessGroupComm::modifyAccessGroupPersons(added, {}, id, code);
         },
         kRoot + "accessGroups/*", 1,
         modify("\"personnelAddList\":\t[{\n\t\t\t\t\"personnelGuid\":\t\"p\",\n\t\t\t\t\"personnelNo\":\t\"\",\n"
                "\t\t\t\t\"personnelName\":\t\"\"\n\t\t\t}],\n\t\t\"personnelRemoveList\":\t[]")},
        {"modifyAccessGroupObjects",
         [](auto& id) {
             std::vector<protocol::ObjectRemove> removed(1);
             removed[0].objectGuid = "o";
             return CAccessGroupComm::modifyAccessGroupObjects({}, removed, id, code);
         },
         kRoot + "accessGroups/*", 1,
         modify("\"objectAddList\":\t[],\n\t\t\"objectRemoveList\":\t[{\n\t\t\t\t\"deviceGuid\":\t\"\",\n"
                "\t\t\t\t\"objectGuid\":\t\"o\"\n\t\t\t}]")},
        {"modifyFaceStatus", [](auto& id) { return CAccessGroupComm::modifyFaceStatusByDeviceGuid(id); },
         kRoot + "modifyfacestatus/*", 1, ""},
        {"modifyIrisStatus", [](auto& id) { return CAccessGroupComm::modifyIrisStatusByDeviceGuid(id); },
         kRoot + "modifyirisstatus/*", 1, ""},
        {"getAccessGroupDownloadProgress",
         [](auto& id) {
             protocol::GroupDownloadProgressData result;
             return CAccessGroupComm::getAccessGroupDownloadProgress(result, id);
         },
         kRoot + "downloadProgress/*", 2, ""},
        {"queryDeviceDownloadDetails",
         [](auto&) {
             protocol::DeviceDownloadDetailsResponseData result;
             return CAccessGroupComm::queryDeviceDownloadDetails(result, Condition());
         },
         kRoot + "downloadDetails", 2, kConditionBody},
        {"queryDownloadPersonStateDetails",
         [](auto&) {
             protocol::PersonStateDetailResponseData result;
             return CAccessGroupComm::queryDownloadPersonStateDetails(result, Condition());
         },
         kRoot + "personStateDetails", 2, kConditionBody},
        {"checkAccessParam",
         [](auto&) {
             protocol::AccessParamCheck param;
             param.scheduleGuid = "s";
             param.doorGuidList = {"door"};
             return CAccessGroupComm::checkAccessParam(param, code);
         },
         kRoot + "accessParamCheck", 2,
         "{\n\t\"accessParamCheck\":\t{\n\t\t\"accessGroupGuid\":\t\"\",\n\t\t\"scheduleGuid\":\t\"s\",\n"
         "\t\t\"doorGuidList\":\t[\"door\"],\n\t\t\"personGuidList\":\t[]\n\t}\n}"},
        {"checkAccessParamForCertainGroups",
         [](auto&) {
             protocol::AccessParamCheckForCertainGroups param;
             param.accessGroupGuidList = {"g"};
             return CAccessGroupComm::checkAccessParamForCertainGroups(param, code);
         },
         kRoot + "accessParamCheckForCertainAccessGroups", 2,
         "{\n\t\"accessParamCheckForCertainGroups\":\t{\n\t\t\"accessGroupGuidList\":\t[\"g\"],\n"
         "\t\t\"scheduleGuid\":\t\"\",\n\t\t\"doorGuidList\":\t[],\n\t\t\"personGuidList\":\t[]\n\t}\n}"},
        {"AccessGroupStatusChange",
         [](auto&) { return AccessGroupStatusChange::request(protocol::AccessGroupStatusChange()); },
         kInternal + "accessGroupStatusChange", 1,
         "{\n\t\"accessGroupStatusChange\":\t{\n\t\t\"accessGroupGuidList\":\t[],\n"
         "\t\t\"accessGroupState\":\t0\n\t}\n}"},
        {"AccessGroupStatusDownload",
         [](auto&) { return AccessGroupStatusDownload::request(protocol::AccessGroupStatusDownload()); },
         kInternal + "accessGroupStatusDownload", 1,
         "{\n\t\"accessGroupStatusDownload\":\t{\n\t\t\"accessGroupGuid\":\t\"\",\n\t\t\"deviceGuid\":\t\"\",\n"
         "\t\t\"deviceProgress\":\t0,\n\t\t\"downloadState\":\t0\n\t}\n}"},
        {"getDownloadedPerson",
         [](auto& id) {
             protocol::DownloadedPersonData result;
             return personDownloadedComm::getDownloadedPerson(result, id);
         },
         kRoot + "downloadPersons/*", 2, ""},
        {"getDownloadedCard",
         [](auto& id) {
             protocol::DownloadedCardListData result;
             return personDownloadedComm::getDownloadedCard(result, id);
         },
         kRoot + "downloadedCards/*", 2, ""},
        {"CStopApplyPerGroup", [](auto& id) { return CStopApplyPerGroup::request(id); }, kRoot + "stopDownload/*", 1,
         ""},
        {"CReApplyFailedInfo", [](auto& id) { return CReApplyFailedInfo::request(id); }, kRoot + "reDownload/*", 1, ""},
        {"CGetWiegands",
         [](auto&) {
             protocol::WiegandQueryResultListData result;
             return CGetWiegands::request(result);
         },
         kRoot + "wiegands", 2, ""},
        {"CSetWiegand",
         [](auto&) {
             protocol::OperationResultListData result;
             protocol::WiegandModifyParam param;
             param.guid = "w";
             param.enabled = true;
             param.deviceGuidList = {"d"};
             return CSetWiegand::request(result, param);
         },
         kRoot + "wiegands", 1,
         "{\n\t\"wiegandModifyParam\":\t{\n\t\t\"guid\":\t\"w\",\n\t\t\"name\":\t\"\",\n\t\t\"enabled\":\ttrue,\n"
         "\t\t\"totalLength\":\t0,\n\t\t\"checkType\":\t0,\n\t\t\"oddBeginBit\":\t0,\n\t\t\"oddLength\":\t0,\n"
         "\t\t\"evenBeginBit\":\t0,\n\t\t\"evenLength\":\t0,\n\t\t\"xorBeginBit\":\t0,\n\t\t\"xorPerLength\":\t0,\n"
         "\t\t\"xorTotalLength\":\t0,\n\t\t\"deviceGuidList\":\t[\"d\"],\n\t\t\"outRuleList\":\t[]\n\t}\n}"},
    };
}

TEST(AccessGroup, RequestVectors)
{
    test::Library library;
    for (const Vector& vector : Vectors()) {
        for (const std::string& id : test::HostileIds()) {
            EXPECT_TRUE(vector.call(id)) << vector.name;
            std::string path = vector.path;
            if (path.back() == '*') {
                path.replace(path.size() - 1, 1, id);
            }
            const RequestParams& request = library.wire.Last();
            EXPECT_EQ(request.url, path) << vector.name;
            EXPECT_EQ(request.method, vector.method) << vector.name;
            EXPECT_EQ(request.body, vector.body) << vector.name;
            EXPECT_EQ(request.timeoutMs, 40000) << vector.name;
            EXPECT_TRUE(request.headers.empty() && request.params.empty()) << vector.name;
        }
    }
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

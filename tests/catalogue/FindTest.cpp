#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/Find.h"

namespace nexwire::catalogue {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<std::string> Names(const std::vector<const Function*>& functions)
{
    std::vector<std::string> names;
    names.reserve(functions.size());
    for (const Function* function : functions) {
        names.push_back(UniqueName(*function));
    }
    return names;
}

TEST(Find, TakesEverySpellingOfAName)
{
    for (const char* name :
         {"CSetWiegand::request", "CSetWiegand", "csetwiegand::REQUEST", "CSetWiegand::request()", " CSetWiegand "}) {
        EXPECT_THAT(Names(Find(name)), ElementsAre("CSetWiegand::request")) << name;
    }
    EXPECT_THAT(Names(Find("modifyAccessGroupName")), ElementsAre("CAccessGroupComm::modifyAccessGroupName"));
    EXPECT_THAT(Find("CSetWiegand::queryAccessGroups"), IsEmpty());
    EXPECT_THAT(Find("modifyAccessGroupName(SnapConfig)"), IsEmpty());
    EXPECT_THAT(Find(""), IsEmpty());
}

TEST(Find, BracketsChooseAmongOverloads)
{
    EXPECT_GT(Find("cfginterface::getConfigRequest").size(), 20U);
    EXPECT_THAT(Names(Find("getConfigRequest(SnapConfig)")), ElementsAre("cfginterface::getConfigRequest(SnapConfig)"));
    EXPECT_THAT(Names(Find("cfginterface::setConfigRequest( SnapConfig )")),
                ElementsAre("cfginterface::setConfigRequest(SnapConfig)"));
    // Arguments that are no structures by their names; all of them choose the overload that has no more.
    EXPECT_THAT(Names(Find("CQueryElementInfoInternal(groupGuid)")),
                ElementsAre("CQueryElementInfoInternal::request(Element, groupGuid, elementGuid)"));
    EXPECT_THAT(Names(Find("CAddDevice(DeviceResultListData, DeviceAddReq)")),
                ElementsAre("CAddDevice::request(DeviceResultListData, DeviceAddReq)"));
}

TEST(Find, EveryUniqueNameFindsItsFunctionAlone)
{
    for (const Function& function : All()) {
        EXPECT_THAT(Find(UniqueName(function)), ElementsAre(&function)) << function.Signature();
    }
}

TEST(Find, SuggestsWhatIsClose)
{
    EXPECT_THAT(Similar("CSetWiegnd"), testing::Contains("CSetWiegand::request"));
    EXPECT_THAT(Similar("accessGroupNam"), testing::Contains("CAccessGroupComm::modifyAccessGroupName"));
    EXPECT_THAT(Similar("qqqqqqqqqqqqqqqqqqqqqqqqqqq"), IsEmpty());
}

struct Case {
    const char* function;
    std::vector<std::pair<std::string, std::string>> values;
    const char* body;   ///< Null for none.
    const char* chosen; ///< Null when nothing runs.
    const char* error;
};

TEST(Prepare, ChoosesByWhatIsGiven)
{
    const Case cases[] = {
        {"CAccessGroupComm::getAccessGroup", {{"groupGuid", "a"}}, nullptr, "CAccessGroupComm::getAccessGroup", ""},
        {"CAccessGroupComm::getAccessGroup", {}, nullptr, nullptr, "not given: groupGuid"},
        {"CAccessGroupComm::getAccessGroup",
         {{"groupGuid", "a"}, {"groupGuid", "b"}},
         nullptr,
         nullptr,
         "'groupGuid' is given twice"},
        {"CAccessGroupComm::getAccessGroup", {{"guid", "a"}}, nullptr, nullptr, "no argument 'guid'"},
        {"CAccessGroupComm::getAccessGroup", {{"groupGuid", "a"}}, "{}", nullptr, "takes no body"},
        {"CAccessGroupComm::getAccessGroup",
         {{"groupGuid", "a"}, {"accessGroupQueryResponseData", "{}"}},
         nullptr,
         nullptr,
         "is a result of"},
        // An overload that only its result tells apart cannot be chosen by values.
        {"getConfigRequest", {{"deviceGuid", "a"}, {"condition", ""}}, nullptr, nullptr, "more than one function"},
        {"getConfigRequest(SnapConfig)",
         {{"deviceGuid", "a"}, {"condition", "1"}},
         nullptr,
         "cfginterface::getConfigRequest(SnapConfig)",
         ""},
        // A setter's structure chooses: by its argument, by its root name, by members that no other has.
        {"setConfigRequest",
         {{"deviceGuid", "a"}, {"snapConfig", "{}"}},
         nullptr,
         "cfginterface::setConfigRequest(SnapConfig)",
         ""},
        {"setConfigRequest",
         {{"deviceGuid", "a"}},
         R"({"snapConfig":{"snapTimes":2}})",
         "cfginterface::setConfigRequest(SnapConfig)",
         ""},
        {"setConfigRequest",
         {{"deviceGuid", "a"}},
         R"({"snapChannelNo":2})",
         "cfginterface::setConfigRequest(SnapConfig)",
         ""},
        {"setConfigRequest", {{"deviceGuid", "a"}}, R"({"enable":true})", nullptr, "more than one function"},
        {"setConfigRequest", {{"deviceGuid", "a"}}, R"({"noSuchMember":1})", nullptr, "fits none of"},
        {"modifyAccessGroupPersons",
         {{"groupGuid", "a"}, {"personnelAddList", "[]"}, {"personnelRemoveList", R"([{"personnelGuid":"p"}])"}},
         nullptr,
         "CAccessGroupComm::modifyAccessGroupPersons",
         ""},
        // An untyped structure may be left out.
        {"setSchedule", {{"command", "4200"}, {"deviceGuid", "d"}}, nullptr, "accessParamComm::setSchedule", ""},
        {"setSchedule",
         {{"command", "4200"}, {"deviceGuid", "d"}},
         R"({"snapConfig":{"snapTimes":2}})",
         "accessParamComm::setSchedule",
         ""},
        {"setSchedule",
         {{"command", "4200"}, {"deviceGuid", "d"}},
         R"({"noSuchRoot":{}})",
         nullptr,
         "structure under its root name"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(std::string(each.function) + " " + (each.body == nullptr ? "" : each.body));
        Given given;
        given.values = each.values;
        given.hasBody = each.body != nullptr;
        given.body = given.hasBody ? each.body : "";
        std::string error;
        const std::unique_ptr<Call> call = Prepare(Find(each.function), given, error);
        EXPECT_EQ(each.chosen == nullptr ? "" : each.chosen, call ? UniqueName(call->function()) : "") << error;
        EXPECT_THAT(error, HasSubstr(each.error));
    }
}

TEST(Prepare, ListsEveryFunctionThatFits)
{
    Given given;
    given.values = {{"deviceGuid", "a"}, {"condition", ""}};
    std::string error;
    EXPECT_EQ(nullptr, Prepare(Find("getConfigRequest"), given, error));
    EXPECT_THAT(error, HasSubstr("\n  cfginterface::getConfigRequest(SnapConfig)\n"));
    EXPECT_THAT(error, HasSubstr("\n  cfginterface::getConfigRequest(WigginParametersAbility)\n"));
}

TEST(Values, SaysWhereTheyDoNotFit)
{
    const struct {
        const char* function;
        const char* argument;
        const char* text;
        const char* error;
    } cases[] = {
        {"downloadAccessGroups", "downloadMode", "1", ""},
        {"downloadAccessGroups", "downloadMode", "-2147483648", ""},
        {"downloadAccessGroups", "downloadMode", "2147483648", "a decimal integer"},
        {"downloadAccessGroups", "downloadMode", "1x", "a decimal integer"},
        {"downloadAccessGroups", "downloadMode", "", "a decimal integer"},
        {"downloadAccessGroups", "deleteGroup", "true", ""},
        {"downloadAccessGroups", "deleteGroup", "0", ""},
        {"downloadAccessGroups", "deleteGroup", "yes", "true or false"},
        {"downloadAccessGroups", "groupGuids", R"(["a","b"])", ""},
        {"downloadAccessGroups", "groupGuids", R"(["a",1])", "a JSON list of texts"},
        {"downloadAccessGroups", "groupGuids", "a,b", "no JSON at byte 0"},
        {"addAccessGroup", "accessGroupAddParam", R"({"name":"x","personnelAddList":[{"personnelNo":"1"}]})", ""},
        {"addAccessGroup", "accessGroupAddParam", R"({"accessGroupAddParam":{"name":"x"}})", ""},
        {"addAccessGroup", "accessGroupAddParam", R"({"name":"x"} )", ""},
        {"addAccessGroup", "accessGroupAddParam", R"({"name":"x"}x)", "no JSON at byte 12"},
        {"addAccessGroup", "accessGroupAddParam", "[]", "a JSON object, AccessGroupAddParam"},
        {"addAccessGroup", "accessGroupAddParam", R"({"nam":"x"})", "'nam' is no member of AccessGroupAddParam"},
        {"addAccessGroup", "accessGroupAddParam", R"({"name":7})", "'name' must be a text"},
        {"addAccessGroup", "accessGroupAddParam", R"({"objectAddList":{}})", "'objectAddList' must be a list"},
        {"addAccessGroup", "accessGroupAddParam", R"({"objectAddList":[1]})", "'objectAddList[0]' must be an object"},
        {"addAccessGroup", "accessGroupAddParam", R"({"objectAddList":[{},{"objectNo":1.5}]})",
         "'objectAddList[1].objectNo' must be an integer of 32 bits"},
        {"addAccessGroup", "accessGroupAddParam", R"({"accessGroupAddParam":{"objectAddList":[{"no":1}]}})",
         "'objectAddList[0].no' is no member of ObjectAdd"},
        {"setConfigRequest(SnapConfig)", "snapConfig", R"({"snapIntervalList":[1,"2"]})",
         "'snapIntervalList[1]' must be an integer"},
        {"setConfigRequest(SnapConfig)", "snapConfig", R"({"enable":"true"})", "'enable' must be true or false"},
        {"modifyAccessGroupPersons", "personnelAddList", R"([{"personnelGuid":1}])",
         "'[0].personnelGuid' must be a text"},
        {"modifyAccessGroupPersons", "personnelAddList", "{}", "a JSON list of PersonnelAdd"},
        {"addPollingTask", "wallPollingTaskInfo", R"({"cameraList":[{"cameraGuid":"c"}]})", ""},
        {"addPollingTask", "wallPollingTaskInfo", R"({"cameras":[]})", "a JSON object, tagTWWallPollingTaskInfo"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(std::string(each.function) + " " + each.argument + "=" + each.text);
        const std::vector<const Function*> found = Find(each.function);
        ASSERT_THAT(found, SizeIs(1));
        Call call(*found.front());
        std::string error;
        EXPECT_EQ(*each.error == '\0', call.Set(each.argument, each.text, error)) << error;
        EXPECT_THAT(error, HasSubstr(each.error));
    }
}

TEST(Values, ComeBackAsTheyWereGiven)
{
    Call call(*Find("addAccessGroup").front());
    std::string error;
    ASSERT_TRUE(call.Set("accessGroupAddParam", R"({"name":"Nacht \"ü\"","objectAddList":[{"objectNo":-3}]})", error));
    EXPECT_THAT(call.Json(0), HasSubstr(R"("Nacht \"ü\"")"));
    EXPECT_THAT(call.Json(0), HasSubstr("-3"));
}

TEST(Results, AreTheValueItselfOrAnObjectByName)
{
    const auto result = [](const char* function, const std::string& returned) {
        Call call(*Find(function).front());
        Outcome outcome;
        outcome.returned = returned;
        return call.Result(outcome);
    };
    EXPECT_EQ("{}", result("modifyAccessGroupDescription", ""));
    EXPECT_EQ(R"({"groupGuid":"","code":0})", result("addAccessGroup", ""));
    EXPECT_THAT(result("getAccessGroup", ""), testing::StartsWith("{\n\t\"accessGroupQueryResponse\""));
    EXPECT_EQ(R"({"returned":"clear"})", result("CSearchFilterLogsComm::decryption", R"("clear")"));
}

} // namespace
} // namespace nexwire::catalogue

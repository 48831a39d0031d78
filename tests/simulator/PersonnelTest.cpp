// The register of persons and the visitors of the local platform.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Client.h"
#include "src/Base64.h"
#include "src/Clock.h"

namespace {

using test::Device;
using test::Person;
using test::Reply;
using test::Site;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const std::string kRegister = "personalManagement/";
const std::string kPersons = kRegister + "personnels";
const std::string kUnits = kRegister + "organizations";
const std::string kSeedRoot = "0A000000000000000000000000000001";
constexpr int kUnknownGuid = 20;
constexpr int kDuplicate = 22;
constexpr int kInUse = 23;

std::string Unit(const std::string& name, const std::string& above)
{
    return R"({"name":")" + name + R"(","parOrgGuid":")" + above + "\"}";
}

std::string List(const std::vector<std::string>& texts)
{
    std::string list;
    for (const std::string& text : texts) {
        list += (list.empty() ? "\"" : ",\"") + text + "\"";
    }
    return "[" + list + "]";
}

class PersonnelTest : public testing::Test {
protected:
    std::string AddUnit(const std::string& name, const std::string& above = "")
    {
        const Reply reply =
            site.Put(kUnits, R"({"organizationsAddList":{"organizationList":[)" + Unit(name, above) + "]}}");
        return reply.Text("/data/organizationInfoList/0/guid");
    }
    /// @param info  members of the sections, without braces.
    Reply Add(const std::string& info)
    {
        return site.Put(kPersons, R"({"addPersonnel":{"personnelInfoList":[{)" + info + "}]}}");
    }
    std::string AddNamed(const std::string& name, const std::string& more = "")
    {
        return Add(R"("basic":{"name":")" + name + "\"" + more + "}").Text("/data/personnelResultList/0/guid");
    }
    Reply Find(const std::string& condition)
    {
        return site.Post(kPersons, R"({"queryMultiPersons":{)" + condition + "}}");
    }
    Reply Get(const std::string& guid) { return site.Post(kPersons + "/" + guid, R"({"queryPerson":{}})"); }
    static std::int64_t Code(const Reply& reply) { return reply.Int("/data/personnelResultList/0/resultCode"); }

    Site site;
};

TEST_F(PersonnelTest, OrganisationsMakeATreeThatRefusesToBreak)
{
    const std::string plant = AddUnit("Plant");
    const std::string hall = AddUnit("Hall", plant);
    const Reply again = site.Put(kUnits, R"({"organizationsAddList":{"organizationList":[)" + Unit("Hall", plant) +
                                             "," + Unit("Gate", "nowhere") + "]}}");
    EXPECT_EQ(again.Int("/data/organizationInfoList/0/resultCode"), kDuplicate);
    EXPECT_EQ(again.Int("/data/organizationInfoList/1/resultCode"), kUnknownGuid);

    const Reply tree = site.Post(kUnits, R"({"QueryCondition":{"parOrgGuid":")" + plant + "\"}}");
    EXPECT_THAT(tree.Texts("/data/organizationInfoList", "name"), ElementsAre("Plant", "Hall"));
    EXPECT_THAT(tree.Text("/data/organizationInfoList/1/fullPath"), testing::EndsWith("/Plant/Hall"));
    EXPECT_EQ(tree.Int("/data/organizationInfoList/0/childNum"), 1);

    // Not below itself, and not away while somebody is in it.
    EXPECT_EQ(
        site.Put(kUnits + "/" + plant, R"({"organization":{"name":"Plant","parOrgGuid":")" + hall + "\"}}").Code(),
        "5-23");
    const std::string ada = AddNamed("Ada", R"(,"orgGuid":")" + hall + "\"");
    const std::string removal = R"({"organizationsDelList":{"guidList":)" + List({hall, plant}) + "}}";
    const Reply refused = site.Delete(kUnits, removal);
    EXPECT_EQ(refused.Int("/data/organizationInfoList/0/resultCode"), kInUse);
    EXPECT_EQ(refused.Int("/data/organizationInfoList/1/resultCode"), kInUse);

    const Reply moved = site.Put(kUnits + "/" + kSeedRoot + "/personnels",
                                 R"({"parentModification":{"personnelGuidList":)" + List({ada}) + "}}");
    EXPECT_EQ(moved.Int("/data/personNum"), 1);
    EXPECT_EQ(site.Post(kPersons + "/" + ada + "/organization", R"({"QueryCondition":{}})").Text("/data/guid"),
              kSeedRoot);
    const Reply removed = site.Delete(kUnits, removal);
    EXPECT_EQ(removed.Int("/data/organizationInfoList/0/resultCode"), 0);
    EXPECT_EQ(removed.Int("/data/organizationInfoList/1/resultCode"), 0);
}

TEST_F(PersonnelTest, NumbersCardsAndPasswordsBelongToOnePerson)
{
    const std::string sections = R"("basic":{"name":"Ada","personNo":"77"},"cardList":[{"cardNo":"4711"}],)"
                                 R"("accesscontrol":{"personPassword":"86420"})";
    const Reply first = Add(sections);
    ASSERT_EQ(Code(first), 0) << first.body;
    EXPECT_EQ(first.Text("/data/personnelResultList/0/personNo"), "77");
    EXPECT_EQ(Code(Add(R"("basic":{"name":"Ben","personNo":"77"})")), kDuplicate);
    EXPECT_EQ(Code(Add(R"("basic":{"name":"Ben"},"cardList":[{"cardNo":"4711"}])")), kDuplicate);
    EXPECT_EQ(Code(Add(R"("basic":{"name":"Ben"},"cardList":[{"cardNo":"1"},{"cardNo":"1"}])")), kDuplicate);
    EXPECT_EQ(Code(Add(R"("basic":{"name":"Ben","orgGuid":"nowhere"})")), kUnknownGuid);

    const Reply checked = site.Put(kRegister + "cards", R"({"cardNoList":{"cardNoList":["4711","4712"]}})");
    EXPECT_EQ(checked.Print("/data/cardNoResList/0/exist"), "true");
    EXPECT_EQ(checked.Print("/data/cardNoResList/1/exist"), "false");
    const Reply holder = site.Post(kRegister + "cards/4711", R"({"cardQueryCondition":{}})");
    EXPECT_EQ(holder.Text("/data/cardInfowithPguid/personName"), "Ada");
    EXPECT_EQ(site.Post(kRegister + "cards/4712", R"({"cardQueryCondition":{}})").Code(), "5-20");
    const Reply password = site.Put(kRegister + "personpassword", R"({"PersonPwd":{"personPassword":"86420"}})");
    EXPECT_EQ(password.Print("/data/repeated"), "true");
    EXPECT_EQ(
        site.Put(kRegister + "personpassword", R"({"PersonPwd":{"personPassword":"123456"}})").Print("/data/tooSimple"),
        "true");
}

TEST_F(PersonnelTest, TheRuleGivesNumbersThatNobodyHas)
{
    EXPECT_EQ(site.Get(kRegister + "defaultSn").Text("/data/defaultSn"), "00000001");
    ASSERT_EQ(site.Put(kPersons + "/snRule",
                       R"({"personnelSNRule":{"prefix":"P","length":4,"random":false,"ruleInited":true}})")
                  .Code(),
              "0-0");
    EXPECT_EQ(site.Put(kPersons + "/snRule", R"({"personnelSNRule":{"prefix":"PQRS","length":4}})").Code(), "5-10");
    EXPECT_EQ(site.Post(kPersons + "/snRule").Text("/data/prefix"), "P");
    ASSERT_EQ(Code(Add(R"("basic":{"name":"Ada","personNo":"P001"})")), 0);
    const Reply made = Add(R"("basic":{"name":"Ben"})");
    EXPECT_EQ(made.Text("/data/personnelResultList/0/personNo"), "P002");
    EXPECT_EQ(site.Get(kRegister + "defaultSn").Text("/data/defaultSn"), "P003");
}

TEST_F(PersonnelTest, SearchesNarrowPageAndTotal)
{
    const std::int64_t seeded = site.Get(kPersons).Int("/data/numberPersonnel");
    EXPECT_EQ(seeded, 24);
    const std::string plant = AddUnit("Plant");
    const std::string hall = AddUnit("Hall", plant);
    for (int i = 0; i < 5; ++i) {
        ASSERT_EQ(
            Code(Add(R"("basic":{"name":"Clone )" + std::to_string(i) + R"(","gender":2,"orgGuid":")" +
                     (i < 2 ? plant : hall) + R"("},"addition":{"plateNoList":["NX )" + std::to_string(i) + "\"]}")),
            0);
    }
    const Reply page = Find(R"("name":"Clone","pageSize":2,"pageNo":2)");
    EXPECT_EQ(page.Int("/data/totalNum"), 5);
    EXPECT_EQ(page.Int("/data/pageNo"), 2);
    ASSERT_EQ(page.Size("/data/personnelInfoList"), 2u);
    EXPECT_EQ(page.Text("/data/personnelInfoList/0/basic/name"), "Clone 2");
    EXPECT_EQ(page.Text("/data/personnelInfoList/0/basic/orgName"), "Hall");
    EXPECT_EQ(Find(R"("name":"Clone","pageSize":2,"pageNo":4)").Size("/data/personnelInfoList"), 0u);

    const auto total = [&](const std::string& condition) {
        return Find(R"("pageSize":100,)" + condition).Int("/data/totalNum");
    };
    EXPECT_EQ(total(R"("plateNo":"NX 3")"), 1);
    EXPECT_EQ(total(R"("orgGuid":")" + plant + "\""), 5);
    EXPECT_EQ(total(R"("includeSubOrg":false,"orgGuid":")" + plant + "\""), 2);
    EXPECT_EQ(total(R"("gender":2)"), 5);
    EXPECT_EQ(total(R"("cardState":0)"), 5);
    EXPECT_EQ(total(R"("cardState":1)"), 24);
    EXPECT_EQ(total(R"("irisState":1)"), 3);
    EXPECT_EQ(total(R"("personNo":"0010")"), 24);
    EXPECT_EQ(total(R"("personNo":"001001","faceState":1)"), 1);
    EXPECT_EQ(total(R"("guidList":)" + List({Person(3), Person(4), "nobody"})), 2);
    EXPECT_EQ(site.Post(kUnits + "/" + hall + "/personnels", R"({"queryMultiPersons":{"pageSize":10}})")
                  .Int("/data/totalNum"),
              3);
    const Reply exact =
        site.Post(kPersons + "/search", R"({"queryPerson":{"personNo":"001001","sectionList":["cardList"]}})");
    EXPECT_EQ(exact.Size("/data/personnelInfoList"), 1u);
    EXPECT_EQ(exact.Print("/data/personnelInfoList/0/basic"), "");
    EXPECT_EQ(exact.Text("/data/personnelInfoList/0/cardList/0/cardNo"), "4000007919");
}

TEST_F(PersonnelTest, AChangeTouchesOnlyTheSectionsSent)
{
    const std::string guid = Person(4);
    ASSERT_EQ(site.Put(kPersons + "/" + guid, R"({"personnelInfo":{"basic":{"name":"David M."}}})").Code(), "0-0");
    const Reply person = Get(guid);
    EXPECT_EQ(person.Text("/data/personnelInfo/basic/name"), "David M.");
    EXPECT_EQ(person.Text("/data/personnelInfo/basic/personNo"), "001004");
    EXPECT_EQ(person.Size("/data/personnelInfo/cardList"), 2u);
    EXPECT_THAT(person.Text("/data/orgFullPath"), StartsWith("Example Works/"));
    EXPECT_EQ(site.Put(kPersons + "/" + guid, R"({"personnelInfo":{"cardList":[{"cardNo":"4000007919"}]}})").Code(),
              "5-22");
    ASSERT_EQ(site.Put(kPersons + "/" + guid, R"({"personnelInfo":{"cardList":[]}})").Code(), "0-0");
    EXPECT_EQ(Get(guid).Size("/data/personnelInfo/cardList"), 0u);
    EXPECT_EQ(site.Put("internal/" + kPersons + "/nobody", R"({"personnelInfo":{"basic":{"name":"x"}}})").Code(),
              "5-20");

    const Reply removed =
        site.Delete(kPersons, R"({"deletePersonnelInfo":{"guidList":)" + List({guid, "nobody"}) + "}}");
    EXPECT_EQ(removed.Int("/data/personnelResultList/0/resultCode"), 0);
    EXPECT_EQ(removed.Int("/data/personnelResultList/1/resultCode"), kUnknownGuid);
    EXPECT_EQ(Get(guid).Code(), "5-20");
}

TEST_F(PersonnelTest, CredentialsAreAddedFoundReplacedAndCleared)
{
    const std::string one = Person(6);
    const Reply faces =
        site.Put(kRegister + "faceData", R"({"faceDataList":{"faceDataList":[{"personnelGuid":")" + one +
                                             R"(","face":{"faceData":"cGlj","faceDataLen":3}},)"
                                             R"({"personnelGuid":")" +
                                             one + R"(","face":{}}]}})");
    ASSERT_EQ(faces.Int("/data/faceDataResultList/0/resultCode"), 0) << faces.body;
    EXPECT_EQ(faces.Int("/data/faceDataResultList/1/resultCode"), 7);
    const std::string face = faces.Text("/data/faceDataResultList/0/faceGuid");
    const Reply found = site.Post(kRegister + "faceData", R"({"face":{"personnelGuid":")" + one + "\"}}");
    EXPECT_EQ(found.Text("/data/faceData"), "cGlj");
    EXPECT_EQ(found.Text("/data/faceGuid"), face);
    EXPECT_EQ(site.Post("internal/" + kRegister + "faceDatas/" + face).Text("/data/personnelGuid"), one);
    ASSERT_EQ(
        site.Put("internal/" + kPersons + "/" + one + "/faces/" + face, R"({"faceInfo":{"faceData":"bmV3"}})").Code(),
        "0-0");
    EXPECT_EQ(site.Post("internal/" + kRegister + "faceDatas/" + face).Text("/data/faceData"), "bmV3");
    const Reply models = site.Post("internal/" + kRegister + "syncModel",
                                   R"({"syncFaceModelData":{"modelVersion":"2","guidList":)" + List({face}) + "}}");
    EXPECT_EQ(models.Text("/data/syncFaceModelResultList/0/modelVersion"), "2");
    site.Delete(kRegister + "faceClear", R"({"deleteFaceInfo":{"guidList":)" + List({one}) + "}}");
    EXPECT_EQ(site.Post("internal/" + kRegister + "faceDatas/" + face).Code(), "5-20");

    site.Put(kRegister + "irisData", R"({"irisDataList":{"irisDataList":[{"personnelGuid":")" + one +
                                         R"(","iris":{"irisData":"aXJpcw=="}}]}})");
    EXPECT_EQ(site.Post("internal/" + kRegister + "irisData/" + one).Text("/data/irisList/0/irisData"), "aXJpcw==");

    // A finger that somebody else has is refused, by the check alone as well.
    const auto finger = [&](const char* service, int person) {
        return site.Put(kRegister + service, R"({"fingerprintDataList":{"fingerprintDataList":[{"personnelGuid":")" +
                                                 Person(person) + R"(","fingerprint":{"fingerData":"Zmlu"}}]}})");
    };
    EXPECT_EQ(finger("checkFingerData", 6).Print("/data/fingerDataResponse/repeated"), "false");
    EXPECT_EQ(finger("fingerData", 6).Int("/data/fingerDataResponse/fingerDataResultList/0/resultCode"), 0);
    for (const char* const service : {"checkFingerData", "fingerData"}) {
        const Reply other = finger(service, 9);
        EXPECT_EQ(other.Print("/data/fingerDataResponse/repeated"), "true");
        EXPECT_EQ(other.Text("/data/fingerDataResponse/fingerDataResultList/0/repeatPersonnelGuid"), one);
    }
    const Reply fingers =
        site.Post(kRegister + "fingerData", R"({"fingerGuidLists":{"personnelGuidList":)" + List({one}) + "}}");
    ASSERT_EQ(fingers.Size("/data/fingerDataList"), 1u);
    EXPECT_EQ(fingers.Text("/data/fingerDataList/0/fingerprint/fingerData"), "Zmlu");
}

TEST_F(PersonnelTest, GeneratedPasswordsAreNobodyElses)
{
    const Reply made = site.Put(kPersons + "/autoGenPersonPwd",
                                R"({"autoGenPersonList":{"personPwdInfoList":[{"personnelGuid":")" + Person(1) +
                                    R"(","length":4},{"personnelGuid":"nobody","length":4}]}})");
    const std::string password = made.Text("/data/personPwdResultList/0/personPassword");
    EXPECT_EQ(password.size(), 4u);
    EXPECT_EQ(made.Int("/data/personPwdResultList/1/resultCode"), kUnknownGuid);
    EXPECT_EQ(Get(Person(1)).Text("/data/personnelInfo/accesscontrol/personPassword"), password);

    // Passwords that people bring along may be somebody else's.
    const Reply repeated = site.Post(kPersons + "/autoGenPersonPwd");
    EXPECT_EQ(repeated.Size("/data/personPasswordRepeatList"), 0u);
    Add(R"("basic":{"name":"Ben"},"accesscontrol":{"personPassword":")" + password + "\"}");
    EXPECT_THAT(site.Post(kPersons + "/autoGenPersonPwd").Texts("/data/personPasswordRepeatList", "personName"),
                testing::UnorderedElementsAre("Ada Winter", "Ben"));
}

TEST_F(PersonnelTest, PropertiesTakeTheirValuesAlong)
{
    const Reply added =
        site.Put(kRegister + "privateProperties",
                 R"({"privatePropertyList":{"privatePropertyList":[{"name":"Locker"},{"name":"Locker"}]}})");
    const std::string guid = added.Text("/data/privatePropertyResultList/0/guid");
    EXPECT_EQ(added.Int("/data/privatePropertyResultList/1/resultCode"), kDuplicate);
    const std::string ada =
        Add(R"("basic":{"name":"Ada"},"privateDataList":[{"propertyGuid":")" + guid + R"(","value":"12"}])")
            .Text("/data/personnelResultList/0/guid");
    ASSERT_EQ(
        site.Put(kRegister + "privateProperties/" + guid, R"({"privatePropertyModification":{"name":"Shelf"}})").Code(),
        "0-0");
    EXPECT_THAT(site.Post(kRegister + "privateProperties").Texts("/data/privatePropertyResultList", "name"),
                ElementsAre("Shelf"));
    site.Delete(kRegister + "privateProperties", R"({"privatePropertyDeleteList":{"guidList":)" + List({guid}) + "}}");
    EXPECT_EQ(Get(ada).Size("/data/personnelInfo/privateDataList"), 0u);

    site.Put(kRegister + "privateProperties",
             R"({"privatePropertyList":{"privatePropertyList":[{"name":"Badge","required":true}]}})");
    EXPECT_EQ(Code(Add(R"("basic":{"name":"Ben"})")), 7);
    EXPECT_EQ(Code(Add(R"("basic":{"name":"Ben"},"privateDataList":[{"propertyGuid":"x","value":"1"}])")), 7);
}

TEST_F(PersonnelTest, AFileIsImportedRowByRow)
{
    const std::string csv = "personNo,name,cardNo\r\n900,\"Lovelace, Ada\",9000\r\n901,Ben,4000007919\r\n902,,\r\n";
    const std::string boundary = "-----------------------------7e231b2b250806";
    const std::string body = "--" + boundary +
                             "\r\nContent-Disposition: form-data; name=\"file\"; filename=\"p.csv\"\r\n"
                             "Content-Type: text/csv\r\n\r\n" +
                             csv + "\r\n--" + boundary + "--\r\n";
    EXPECT_EQ(site.Put(kRegister + "configurationFiles").Code(), "5-20");
    const std::string head = "PUT /7730/v1/personalManagement/uploadFile?uploadGuid=u1 HTTP/1.1\r\nHost: localhost\r\n"
                             "Connection: close\r\nContent-Type: multipart/form-data; boundary=" +
                             boundary + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n";
    ASSERT_THAT(test::SendRaw(site.Port(), head + body), HasSubstr("\"0-0\""));
    const std::string task = site.Put(kRegister + "configurationFiles").Text("/data/taskGuid");
    const auto progress = [&] { return site.Post(kRegister + "configurationFiles/" + task); };
    EXPECT_EQ(progress().Int("/data/progress"), 0);
    site.Advance(400);
    const Reply half = progress();
    EXPECT_EQ(half.Int("/data/progress"), 66);
    EXPECT_EQ(half.Print("/data/finished"), "false");
    site.Advance(60000);
    const Reply done = progress();
    EXPECT_EQ(done.Print("/data/finished"), "true");
    EXPECT_EQ(done.Int("/data/successNum"), 1);
    EXPECT_THAT(done.Texts("/data/failedList", "item"), ElementsAre("901", "902"));
    EXPECT_EQ(progress().Int("/data/failedNum"), 2); // Nothing happens twice.
    EXPECT_EQ(Find(R"("pageSize":10,"name":"Lovelace, Ada","cardNo":"9000")").Int("/data/totalNum"), 1);

    const Reply file = site.Post(kRegister + "configurationFiles");
    std::string exported;
    ASSERT_TRUE(nexwire::simulator::FromBase64(file.Text("/data/fileData"), exported));
    site.Advance(60000);
    EXPECT_EQ(site.Post(kRegister + "configurationFiles/" + file.Text("/data/taskGuid")).Int("/data/successNum"), 25);
    EXPECT_THAT(exported, HasSubstr("\n900,\"Lovelace, Ada\","));
}

TEST_F(PersonnelTest, WhatADeviceHoldsComesIntoTheRegister)
{
    const std::string start = kRegister + "synchronous/";
    EXPECT_EQ(site.Put(start + Device(14), R"({"synchronousQuery":{}})").Code(), "5-40");
    const std::string task =
        site.Put(start + Device(1), R"({"synchronousQuery":{"orgGuid":")" + kSeedRoot + "\"}}").Text("/data/taskGuid");
    site.Advance(60000);
    const Reply done = site.Put(start + task + "/progress");
    EXPECT_EQ(done.Int("/data/totalNum"), 5);
    EXPECT_EQ(done.Int("/data/addedNum"), 4); // Ada Winter was there.
    EXPECT_EQ(Find(R"("pageSize":10,"orgGuid":")" + kSeedRoot + R"(","includeSubOrg":false)").Int("/data/totalNum"), 4);

    // A task that is stopped half-way keeps what it has done.
    const std::string other =
        site.Put(start + Device(2), R"({"synchronousQuery":{"coverMode":1}})").Text("/data/taskGuid");
    site.Advance(400);
    EXPECT_EQ(site.Put(start + Device(2), R"({"synchronousQuery":{"stop":true,"taskGuid":")" + other + "\"}}").Code(),
              "0-0");
    site.Advance(60000);
    const Reply stopped = site.Put(start + other + "/progress");
    EXPECT_EQ(stopped.Int("/data/state"), 4);
    EXPECT_EQ(stopped.Int("/data/updatedNum"), 2);

    const std::string station =
        site.Put(start + "enrollmentStation", R"({"synchronousQuery":{}})").Text("/data/taskGuid");
    site.Advance(60000);
    EXPECT_EQ(site.Put(start + "enrollmentStation/" + station + "/progress").Print("/data/finished"), "true");
    EXPECT_EQ(Find(R"("pageSize":10,"personNo":"00200")").Int("/data/totalNum"), 0);
    const Reply taken = site.Put(start + "enrollmentStation/data/" + station, R"({"enrollmentStationData":{}})");
    EXPECT_EQ(taken.Int("/data/addedNum"), 2); // The third brings Ada Winter's card.
}

TEST_F(PersonnelTest, GroupsInUseStayAndGetNumbersOnDevices)
{
    const auto member = [](int person) { return R"({"personnelGuid":")" + Person(person) + "\"}"; };
    const Reply made =
        site.Put("accessController/perGroups", R"({"perGroupAddReq":{"perGroupName":"Guards","perGroupMemberList":[)" +
                                                   member(1) + "," + member(2) + "]}}");
    const std::string guards = made.Text("/data/perGroupResultList/0/perGroupGuid");
    ASSERT_EQ(guards.size(), 32u) << made.body;
    EXPECT_EQ(site.Post("accessController/perGroups", R"({"perGroupQueryReq":{"personnelGuid":")" + Person(2) + "\"}}")
                  .Size("/data/perGroupQueryRspList"),
              1u);
    EXPECT_EQ(site.Post("accessController/perGroups", R"({"perGroupQueryReq":{"personnelGuid":")" + Person(3) + "\"}}")
                  .Size("/data/perGroupQueryRspList"),
              0u);
    const Reply vault =
        site.Put("accessController/authGroups", R"({"authGroupAddReq":{"authGroupName":"Vault","deviceGuid":")" +
                                                    Device(1) + R"(","authGroupMemberList":[{"perGroupGuid":")" +
                                                    guards + R"(","personNum":2}]}})");
    ASSERT_EQ(vault.Code(), "0-0") << vault.body;
    const std::string removal = R"({"perGroupDelReq":{"perGroupGuidList":)" + List({guards}) + "}}";
    EXPECT_EQ(site.Delete("accessController/perGroups", removal).Int("/data/perGroupDelRspList/0/resultCode"), kInUse);

    const std::string device = "accessController/belongGroup/devices/" + Device(1);
    const Reply set = site.Put(device, R"({"perGroupMemberInfoData":{"deviceGuid":")" + Device(1) +
                                           R"(","perGroupMemberInfoList":[{"groupNo":1},{"perGroupMemberList":[)" +
                                           member(2) + "]}]}}");
    EXPECT_EQ(set.Int("/data/perGroupMemberInfoList/1/groupNo"), 2) << set.body;
    const Reply numbers =
        site.Post("accessController/belongGroupnum/devices/" + Device(1),
                  R"({"userBelongGroupNumIInboundData":{"userBelongGroupNumList":[)" + member(2) + "]}}");
    EXPECT_EQ(numbers.Print("/data/userBelongGroupNumList/0/groupNoList"), "[2]");
    EXPECT_EQ(site.Post(device).Int("/data/perGroupMemberInfoDataRsp/perGroupMemberInfoList/1/groupNo"), 2);
}

TEST_F(PersonnelTest, ADevicesReaderAnswersWhenThePersonHasCome)
{
    const auto ask = [&](const std::string& guid) {
        return site.Post("deviceManagement/devices/" + Device(1) + "/batchPassThrough",
                         R"({"batchPassThroughReq":{"command":7101,"guid":")" + guid + "\"}}");
    };
    const Reply first = ask("");
    const std::string guid = first.Text("/data/batchPassThroughRsp/guid");
    EXPECT_EQ(first.Size("/data/batchPassThroughRsp/batchReturnDataList"), 0u);
    EXPECT_EQ(ask(guid).Size("/data/batchPassThroughRsp/batchReturnDataList"), 0u);
    const Reply taken = ask(guid);
    ASSERT_EQ(taken.Size("/data/batchPassThroughRsp/batchReturnDataList"), 1u);
    EXPECT_THAT(taken.Text("/data/batchPassThroughRsp/batchReturnDataList/0/outBuffer"),
                StartsWith(R"({"faceReturn":{)"));
}

TEST_F(PersonnelTest, ADeviceHandsItsPersonsOutInPages)
{
    std::string guid;
    std::vector<std::size_t> sizes;
    for (bool finished = false; !finished && sizes.size() < 9;) {
        const Reply page =
            site.Post("internal/deviceManagement/devices/" + Device(1) + "/batchPassThrough",
                      R"({"batchPassThroughReq":{"command":7001,"maxResultNum":2,"guid":")" + guid + "\"}}");
        guid = page.Text("/data/batchPassThroughRsp/guid");
        finished = page.Print("/data/batchPassThroughRsp/isFinish") == "true";
        sizes.push_back(page.Size("/data/batchPassThroughRsp/batchReturnDataList"));
    }
    EXPECT_THAT(sizes, ElementsAre(2, 2, 1));
}

// ---- Visitors ----

class VisitorTest : public testing::Test {
protected:
    std::string Group(const std::string& name, int device)
    {
        return site
            .Put(kRoot + "accessPointGroup", R"({"visitAaccessGroupAddParam":{"accessGroupName":")" + name +
                                                 R"(","accessPointList":[{"deviceGuid":")" + Device(device) + "\"}]}}")
            .Text("/data/accessGroupGuid");
    }
    Reply Invite(const std::string& name, const std::string& group,
                 const std::string& end = "2099-03-01T18:00:00+00:00")
    {
        return site.Put(kRoot + "appointment",
                        R"({"addAppointment":{"appointmentList":[{"visitor":{"visitorName":")" + name +
                            R"("},"visitBeginTime":"2026-01-01T08:00:00+00:00","visitEndTime":")" + end +
                            R"(","accessGroupGuidList":)" + List({group}) + "}]}}");
    }
    static std::string Guid(const Reply& reply)
    {
        return reply.Text("/data/addAppointmentResultList/0/appointmentGuid");
    }

    const std::string kRoot = "visitorManagement/visitor/";
    Site site;
};

TEST_F(VisitorTest, FromAppointmentToRecord)
{
    const std::string lobby = Group("Lobby", 1);
    const Reply invited = Invite("Vera", lobby);
    const std::string guid = Guid(invited);
    ASSERT_EQ(guid.size(), 32u) << invited.body;
    EXPECT_EQ(invited.Text("/data/addAppointmentResultList/0/visitCode").size(), 6u);
    EXPECT_EQ(Invite("Early", lobby, "2025-01-01T08:00:00+00:00").Int("/data/addAppointmentResultList/0/resultCode"),
              10);
    EXPECT_EQ(Invite("", lobby).Code(), "18-10");
    EXPECT_EQ(Invite("Lost", "nowhere").Int("/data/addAppointmentResultList/0/resultCode"), kUnknownGuid);

    const auto become = [&](int state) {
        return site
            .Put(
                kRoot + "appointment/" + guid,
                R"({"modifyAppointment":{"visitor":{"visitorName":"Vera"},"visitBeginTime":"2026-01-01T08:00:00+00:00",)"
                R"("visitEndTime":"2099-03-01T18:00:00+00:00","accessGroupGuidList":)" +
                    List({lobby}) + R"(,"appointmentState":)" + std::to_string(state) + "}}")
            .Code();
    };
    const auto inside = [&](int state) {
        return site
            .Post(kRoot + "visitorRecord",
                  R"({"queryVisitorRecordCondition":{"visitorName":"Ver","visitState":)" + std::to_string(state) + "}}")
            .Int("/data/totalNum");
    };
    EXPECT_EQ(inside(0), 1);
    EXPECT_EQ(become(1), "0-0");
    EXPECT_EQ(inside(1), 1);
    EXPECT_EQ(become(0), "18-10");
    EXPECT_EQ(become(2), "0-0");
    EXPECT_EQ(inside(2), 1);

    const std::string removal = R"({"deleteAccessPointGroupCondition":{"accessGroupGuidList":)" + List({lobby}) + "}}";
    const char* const code = "/data/deleteAccessPointGroupResult/accessGroupResultList/0/resultCode";
    EXPECT_EQ(site.Delete(kRoot + "accessPointGroup", removal).Int(code), kInUse);
    EXPECT_EQ(
        site.Delete(kRoot + "appointment", R"({"deleteAppointment":{"appointmentGuidList":)" + List({guid}) + "}}")
            .Code(),
        "0-0");
    EXPECT_EQ(site.Delete(kRoot + "accessPointGroup", removal).Int(code), 0);
}

TEST_F(VisitorTest, PermissionsReachDevicesOrSayWhyNot)
{
    const std::string good = Guid(Invite("Vera", Group("Lobby", 1)));
    const std::string bad = Guid(Invite("Otto", Group("Cellar", 14)));
    site.Advance(600);
    const auto states = [&] {
        const Reply all = site.Post(kRoot + "appointment");
        return all.Print("/data/queryAppointmentResultList/0/downloadState") +
               all.Print("/data/queryAppointmentResultList/1/downloadState");
    };
    EXPECT_EQ(states(), "22");
    site.Advance(600);
    EXPECT_EQ(states(), "34");
    const Reply failed = site.Post(kRoot + "visitorDownLoadFaildRecord");
    EXPECT_THAT(failed.Texts("/data/queryVisitorRecordResultList", "recordGuid"), ElementsAre(bad));
    const Reply why = site.Post(kRoot + "visitorErrorRecord/" + bad);
    EXPECT_THAT(why.Texts("/data/visitorErrorRecordResponse/errorRecordList", "deviceGuid"), ElementsAre(Device(14)));
    EXPECT_EQ(site.Post(kRoot + "visitorErrorRecord/" + good).Size("/data/visitorErrorRecordResponse/errorRecordList"),
              0u);
    site.Put("visitorManagement/permission",
             R"({"downloadPermissionInfo":{"appointmentGuidList":)" + List({good}) + R"(,"operateType":1}})");
    EXPECT_EQ(states(), "04");
}

TEST_F(VisitorTest, SettingsDecideWhatANewAppointmentGets)
{
    EXPECT_EQ(site.Post("visitorManagement/setting/basic").Int("/data/basicSetting/codeLength"), 6);
    const std::string lobby = Group("Lobby", 1);
    ASSERT_EQ(site.Put("visitorManagement/setting/basic",
                       R"({"basicSetting":{"autoDownload":false,"codeLength":8,"defaultAccessGroupGuidList":)" +
                           List({lobby}) + "}}")
                  .Code(),
              "0-0");
    const Reply invited =
        site.Put(kRoot + "appointment",
                 R"({"addAppointment":{"appointmentList":[{"visitor":{"visitorName":"Vera"},)"
                 R"("visitBeginTime":"2026-01-01T08:00:00+00:00","visitEndTime":"2099-01-01T08:00:00+00:00"}]}})");
    EXPECT_EQ(invited.Text("/data/addAppointmentResultList/0/visitCode").size(), 8u);
    const Reply all = site.Post(kRoot + "appointment");
    EXPECT_EQ(all.Int("/data/queryAppointmentResultList/0/downloadState"), 0);
    EXPECT_EQ(all.Print("/data/queryAppointmentResultList/0/accessGroupGuidList"), List({lobby}));
}

TEST_F(VisitorTest, WhoForgetsToLeaveIsOverdueOrLeavesAtTheEnd)
{
    const auto set = [&](const std::string& settings) {
        site.Put("visitorManagement/setting/basic", R"({"basicSetting":{)" + settings + "}}");
    };
    set(R"("autoLeave":false,"visitDuration":2,"needCertificate":true)");
    const std::string lobby = Group("Lobby", 1);
    EXPECT_EQ(Invite("Vera", lobby).Int("/data/addAppointmentResultList/0/resultCode"), 7);
    const auto visit = [&](const std::string& begin, const std::string& end, const std::string& more) {
        return R"({"visitor":{"visitorName":"Vera","certificateNo":"C1"},"visitBeginTime":")" + begin +
               R"(","visitEndTime":")" + end + "\"" + more + "}";
    };
    const std::string now = nexwire::simulator::IsoTime(site.NowMs());
    const std::string guid =
        Guid(site.Put(kRoot + "appointment", R"({"addAppointment":{"appointmentList":[)" + visit(now, "", "") + "]}}"));
    const std::string end = nexwire::simulator::IsoTime(site.NowMs() + 2 * 3600000);
    EXPECT_EQ(site.Post(kRoot + "appointment").Text("/data/queryAppointmentResultList/0/visitEndTime"), end);
    ASSERT_EQ(site.Put(kRoot + "appointment/" + guid,
                       R"({"modifyAppointment":)" + visit(now, end, R"(,"appointmentState":1)") + "}")
                  .Code(),
              "0-0");
    const auto state = [&] {
        return site.Post(kRoot + "visitorRecord", R"({"queryVisitorRecordCondition":{}})")
            .Int("/data/queryVisitorRecordResultList/0/visitState");
    };
    EXPECT_EQ(state(), 1);
    site.Advance(3 * 3600000);
    EXPECT_EQ(state(), 3);
    set(R"("autoLeave":true)");
    EXPECT_EQ(state(), 2);
}

} // namespace

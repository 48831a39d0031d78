#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "Client.h"

namespace {

using test::Device;
using test::Reply;
using test::Site;
using testing::ElementsAre;
using testing::IsEmpty;

class RecordTest : public testing::Test {
protected:
    Site site;
};

TEST_F(RecordTest, EncryptsReversiblyAndNeverTwiceAlike)
{
    const auto encrypt = [&](const std::string& list) {
        return site.Put("internal/framework/encryption", "{\"encryptionInfo\":{\"plaintextList\":" + list + "}}");
    };
    const auto decrypt = [&](const std::string& list) {
        return site.Put("internal/framework/decryption", "{\"decryptionInfo\":{\"ciphertextList\":" + list + "}}");
    };
    EXPECT_EQ(encrypt("[]").Print("/data"), "{\"ciphertextList\":[]}");
    const std::string texts =
        "[\"\",\"a\",\"a\",\"\xE5\xAF\x86\xE7\xA0\x81 \\\"x\\\"\",\"" + std::string(70000, 'p') + "\"]";
    const Reply sealed = encrypt(texts);
    ASSERT_EQ(sealed.Size("/data/ciphertextList"), 5u);
    const auto ciphers = sealed.Texts("/data/ciphertextList", "ciphertext");
    EXPECT_EQ(std::set<std::string>(ciphers.begin(), ciphers.end()).size(), 5u);
    EXPECT_EQ(sealed.body.find("\"plaintext\":\"a\"") != std::string::npos, true);

    std::string list;
    for (const std::string& cipher : ciphers) {
        list += (list.empty() ? "\"" : ",\"") + cipher + "\"";
    }
    const auto plain = decrypt("[" + list + "]").Texts("/data/plaintextList", "plaintext");
    EXPECT_THAT(plain, ElementsAre("", "a", "a", "\xE5\xAF\x86\xE7\xA0\x81 \"x\"", std::string(70000, 'p')));

    std::string changed = ciphers[1];
    changed[changed.size() / 2] = changed[changed.size() / 2] == 'A' ? 'B' : 'A';
    const auto bad =
        decrypt("[\"" + changed + "\",\"\",\"plain\",\"QUJD\",\"" + ciphers[1].substr(4) + "\",\"" + ciphers[1] + "\"]")
            .Texts("/data/plaintextList", "plaintext");
    EXPECT_THAT(bad, ElementsAre("", "", "", "", "", "a"));
    EXPECT_EQ(encrypt("[1]").Code(), "2-8");
    EXPECT_EQ(site.Put("internal/framework/encryption", "{\"encryptionInfo\":{}}").Code(), "2-7");
}

TEST_F(RecordTest, WiegandFormatsChangeAndTellEveryDevice)
{
    const Reply before = site.Post("accessController/wiegands");
    ASSERT_EQ(before.Size("/data/wiegandQueryResultList"), 4u);
    const std::string guid = before.Text("/data/wiegandQueryResultList/0/guid");
    const Reply changed =
        site.Put("accessController/wiegands", "{\"wiegandModifyParam\":{\"guid\":\"" + guid +
                                                  "\",\"totalLength\":32,\"deviceGuidList\":[\"" + Device(1) +
                                                  "\",\"gone\",\"" + Device(14) + "\"]}}");
    EXPECT_EQ(changed.Print("/data/operationResultList/0"),
              "{\"guid\":\"" + Device(1) + "\",\"resultCode\":0,\"resultMsg\":\"success\"}");
    EXPECT_EQ(changed.Int("/data/operationResultList/1/resultCode"), 21);
    EXPECT_EQ(changed.Int("/data/operationResultList/2/resultCode"), 40);
    const Reply after = site.Post("accessController/wiegands");
    EXPECT_EQ(after.Int("/data/wiegandQueryResultList/0/totalLength"), 32);
    EXPECT_EQ(after.Int("/data/wiegandQueryResultList/0/oddLength"), 12) << "what was not sent stays";
    EXPECT_EQ(site.Put("accessController/wiegands", "{\"wiegandModifyParam\":{\"guid\":\"no\"}}").Code(), "3-20");
    EXPECT_EQ(site.Put("accessController/wiegands",
                       "{\"wiegandModifyParam\":{\"guid\":\"" + guid + "\",\"name\":\"Wiegand 34\"}}")
                  .Code(),
              "3-22");
}

TEST_F(RecordTest, PlansAreKeptAndProtectedWhileInUse)
{
    const auto plans = [&](int type) {
        return site.Post("accessController/allBasicPlanInfos",
                         "{\"basicPlanQueryCondition\":{\"planInfoType\":" + std::to_string(type) + "}}");
    };
    EXPECT_EQ(plans(0).Size("/data/basicPlanInfoResponseList"), 4u);
    EXPECT_EQ(plans(2).Size("/data/basicPlanInfoResponseList"), 1u);
    const std::string detail = "{\"weekPlanList\":[{\"week\":\"Monday\",\"enable\":true}]}";
    const Reply added =
        site.Put("accessController/planInfos",
                 "{\"planInfoAddParam\":{\"planInfoName\":\"Mine\",\"planInfoType\":1,\"detailInfo\":" + detail + "}}");
    const std::string plan = added.Text("/data/planInfoAddedReturn/planInfoGuid");
    ASSERT_EQ(plan.size(), 32u) << added.body;
    const auto read = [&] {
        return site.Post("accessController/planInfos/" + plan, "{\"singlePlanQuery\":{\"planInfoType\":1}}");
    };
    EXPECT_EQ(read().Print("/data/singlePlanQueryResult/detailInfo"), detail);

    const Reply group = site.Put("accessController/accessGroups",
                                 "{\"accessGroupAddParam\":{\"name\":\"G\",\"secheduleGuid\":\"" + plan +
                                     "\",\"personnelAddList\":[{\"personnelGuid\":\"p\"}],"
                                     "\"objectAddList\":[{\"deviceGuid\":\"" +
                                     Device(1) + "\",\"objectGuid\":\"d\"}]}}");
    const std::string guid = group.Text("/data/accessGroupModifyResult/accessGroupGuid");
    EXPECT_EQ(site.Get("accessController/planUsedAccessGroup/" + plan).Print("/data"),
              "{\"accessGroupGuidsList\":[\"" + guid + "\"]}");
    const auto modify = [&](const std::string& name) {
        return site.Put("accessController/planInfos/" + plan,
                        "{\"planInfoModifyParam\":{\"planInfoName\":\"" + name + "\"}}");
    };
    EXPECT_EQ(modify("Never sent").Print("/data/planInfoModifyResult/accessGroupGuidList"), "[]");
    site.Put("accessController/accessDownload",
             "{\"accessDownload\":{\"accessGroupDownList\":[{\"accessgroupGuid\":\"" + guid + "\"}]}}");
    site.Advance(1000);
    EXPECT_EQ(modify("Sent").Print("/data/planInfoModifyResult/accessGroupGuidList"), "[\"" + guid + "\"]");
    EXPECT_EQ(site.Post("accessController/accessGroups/" + guid).Int("/data/accessGroupQueryResponse/accessGroupState"),
              1);
    EXPECT_EQ(modify("All day").Code(), "3-22");
    EXPECT_EQ(plans(0).Print("/data/basicPlanInfoResponseList/4/isUsed"), "true");

    const Reply removed =
        site.Delete("accessController/planInfos", "{\"planInfoRemoveParam\":{\"planInfoGuidList\":[\"" + plan +
                                                      "\",\"51000000000000000000000000000004\",\"nothing\"]}}");
    EXPECT_EQ(removed.Int("/data/planInfoRemoveResultList/0/resultCode"), 23);
    EXPECT_EQ(removed.Int("/data/planInfoRemoveResultList/1/resultCode"), 0);
    EXPECT_EQ(removed.Int("/data/planInfoRemoveResultList/2/resultCode"), 20);
    EXPECT_EQ(plans(0).Size("/data/basicPlanInfoResponseList"), 4u);
    EXPECT_EQ(read().Code(), "0-0");
}

TEST_F(RecordTest, VerifyModesPerPersonAndDevice)
{
    const std::string path = "accessController/personnelVerifyMode/devices/" + Device(2);
    const auto set = [&](int operate, const std::string& persons) {
        return site.Put(path, "{\"setVerifyModeReq\":{\"operateType\":" + std::to_string(operate) +
                                  ",\"personnelVerifyModeSetList\":[" + persons + "]}}");
    };
    const auto person = [](const std::string& guid, const std::string& name, int mode) {
        return "{\"personnelGuid\":\"" + guid + "\",\"personnelNo\":\"n" + guid + "\",\"personnelName\":\"" + name +
               "\",\"userVerifyMode\":" + std::to_string(mode) + "}";
    };
    const auto query = [&](bool narrow, const std::string& filter) {
        return site
            .Post(path, std::string("{\"personnelVerifyModeCondition\":{\"isQuery\":") + (narrow ? "true" : "false") +
                            ",\"personnelVerifyModeFilterCondition\":{" + filter + "}}}")
            .Texts("/data/personnelVerifyModeRsp/verifyModeList", "personnelGuid");
    };
    const Reply first = set(0, person("1", "Ada", 3) + "," + person("2", "Bea", 4) + "," + person("3", "Cid", 4));
    EXPECT_THAT(first.Texts("/data/setVerifyModeRsp/operationResultList", "guid"), ElementsAre("1", "2", "3"));
    set(1, person("1", "Ada", 5));
    EXPECT_THAT(query(false, "\"verifyModeList\":[9]"), ElementsAre("1", "2", "3"));
    EXPECT_THAT(query(true, "\"verifyModeList\":[5,4],\"downStatus\":-1,\"personnelName\":\"A\""),
                ElementsAre("1", "2"));
    EXPECT_THAT(query(true, "\"verifyModeList\":[3]"), IsEmpty());
    EXPECT_THAT(query(true, "\"verifyModeList\":[],\"personnelNo\":\"n3\""), ElementsAre("3"));
    EXPECT_EQ(site.Post("accessController/personnelVerifyModeCount/devices/" + Device(2)).Print("/data"),
              "{\"personnelVerifyValues\":{\"deviceGuid\":\"" + Device(2) +
                  "\",\"totalNum\":3,\"verifyModeCountList\":[{\"userVerifyMode\":4,\"personnelNum\":2},"
                  "{\"userVerifyMode\":5,\"personnelNum\":1}]}}");
    const Reply taken = set(2, person("2", "", 0) + "," + person("9", "", 0));
    EXPECT_EQ(taken.Int("/data/setVerifyModeRsp/operationResultList/0/resultCode"), 0);
    EXPECT_EQ(taken.Int("/data/setVerifyModeRsp/operationResultList/1/resultCode"), 20);
    EXPECT_THAT(query(false, ""), ElementsAre("1", "3"));
    EXPECT_EQ(site.Post("accessController/personnelVerifyModeCount/devices/" + Device(1))
                  .Int("/data/personnelVerifyValues/totalNum"),
              0);
}

TEST_F(RecordTest, FirstPersonsAnswerEachItem)
{
    const auto entry = [](const std::string& device, const std::string& door, const std::string& person) {
        return "{\"deviceGuid\":\"" + device + "\",\"doorGuid\":\"" + door + "\",\"doorNo\":1,\"personnelGuid\":\"" +
               person + "\",\"personnelNo\":\"1\",\"personnelName\":\"P" + person + "\"}";
    };
    const Reply added = site.Put("accessController/firstPersonInfos",
                                 "{\"firstPersonAddParam\":{\"firstPersonParamList\":[" + entry(Device(1), "d", "1") +
                                     "," + entry("gone", "d", "2") + "," + entry(Device(1), "d", "1") + "," +
                                     entry(Device(1), "d", "3") + "]}}");
    const std::string list = "/data/firstPersonAddReturnList";
    ASSERT_EQ(added.Size(list), 4u) << added.body;
    EXPECT_EQ(added.Int(list + "/0/resultCode"), 0);
    EXPECT_EQ(added.Int(list + "/1/resultCode"), 21);
    EXPECT_EQ(added.Text(list + "/1/guid"), "");
    EXPECT_EQ(added.Text(list + "/1/personnelGuid"), "2");
    EXPECT_EQ(added.Int(list + "/2/resultCode"), 22);
    const auto at = [&](const std::string& door, const std::string& condition) {
        return site.Post("accessController/firstPersonInfos/" + door, "{\"firstPersonCondition\":{" + condition + "}}")
            .Texts("/data/firstPersonQueryResultRsp/firstPersonInfoList", "personnelGuid");
    };
    EXPECT_THAT(at("d", "\"isQuery\":false"), ElementsAre("1", "3"));
    EXPECT_THAT(at("d", "\"isQuery\":true,\"firstPersonFilterCondition\":{\"downStatus\":3,\"personnelName\":\"p3\"}"),
                ElementsAre("3"));
    EXPECT_THAT(at("e", "\"isQuery\":false"), IsEmpty());
    const Reply removed =
        site.Delete("accessController/firstPersonInfos",
                    "{\"firstPersonRemoveList\":{\"guidList\":[\"" + added.Text(list + "/0/guid") + "\",\"x\"]}}");
    EXPECT_EQ(removed.Int("/data/firstPersonRemoveResultList/0/resultCode"), 0);
    EXPECT_EQ(removed.Int("/data/firstPersonRemoveResultList/1/resultCode"), 20);
    EXPECT_THAT(at("d", "\"isQuery\":false"), ElementsAre("3"));
}

TEST_F(RecordTest, LogsComeInPagesNewestFirst)
{
    std::string calls;
    std::string notices;
    for (int i = 1; i <= 25; ++i) {
        const std::string n = std::to_string(i);
        calls += (i == 1 ? "" : ",") + std::string("{\"guid\":\"\",\"deviceType\":") + std::to_string(i % 3) +
                 ",\"personGUID\":\"p\",\"beginTime\":" + n + "000,\"callState\":0}";
        notices += (i == 1 ? "" : ",") + std::string("{\"sendTime\":") + n +
                   "000,\"noticeInfo\":{\"noticeType\":\"alarm\",\"noticeTitle\":\"Title " + n + "\"}}";
    }
    const std::string dial = "accessController/interCom/dailInfos";
    const Reply added = site.Put(dial, "{\"dailInfosAdd\":{\"dailInfos\":[" + calls + "]}}");
    EXPECT_EQ(added.Size("/data/dialInfoResult/operationResultList"), 25u);
    const auto page = [&](int number, int size, const std::string& more = {}) {
        return site.Post(dial, "{\"dailInfosGet\":{\"pageNo\":" + std::to_string(number) +
                                   ",\"pageSize\":" + std::to_string(size) +
                                   ",\"personGUID\":\"\",\"deviceType\":-1,\"beginTime\":0" + more + "}}");
    };
    const std::string list = "/data/dailInfosResponseData/dailInfos";
    EXPECT_EQ(page(1, 10).Int("/data/dailInfosResponseData/total"), 25);
    EXPECT_EQ(page(1, 10).Int(list + "/0/beginTime"), 25000);
    EXPECT_EQ(page(3, 10).Size(list), 5u);
    EXPECT_EQ(page(3, 10).Int(list + "/4/beginTime"), 1000);
    EXPECT_EQ(page(4, 10).Size(list), 0u);
    EXPECT_EQ(page(1, 0).Size(list), 25u);
    EXPECT_EQ(page(-1, 2147483647).Size(list), 25u);
    EXPECT_EQ(page(1, 0, ",\"endTime\":20000,\"callState\":-1").Size(list), 20u);
    EXPECT_EQ(site.Post(dial, "{\"dailInfosGet\":{\"deviceType\":2,\"beginTime\":4000}}").Size(list), 8u - 1u);

    const std::string guid = page(1, 1).Text(list + "/0/guid");
    const Reply removed = site.Delete(dial, "{\"dailInfosDelete\":{\"guidList\":[\"" + guid + "\"]}}");
    EXPECT_EQ(removed.Text("/data/dialInfoResult/operationResultList/0/guid"), guid);
    EXPECT_EQ(page(1, 1).Int(list + "/0/beginTime"), 24000);

    const std::string notice = "accessController/interCom/noticeLogs";
    EXPECT_EQ(site.Put(notice, "{\"noticeAdd\":{\"noticeLogList\":[" + notices + "]}}")
                  .Size("/data/noticeReturnData/operationResultList"),
              25u);
    const Reply found = site.Post(notice, "{\"noticeGet\":{\"pageNo\":2,\"pageSize\":4,\"keyword\":\"title 2\"}}");
    EXPECT_EQ(found.Int("/data/noticeInfosResponseData/total"), 7);
    EXPECT_EQ(found.Texts("/data/noticeInfosResponseData/noticeLogList", "guid").size(), 3u);
}

TEST_F(RecordTest, LiftRelaysByThemselvesAndByController)
{
    const std::string path = "accessController/ladderControlRelayFromDB";
    const auto relay = [](int device, int number) {
        return "{\"deviceGuid\":\"" + Device(device) +
               "\",\"name\":\"R\",\"ladderControlRelay\":{\"relayNo\":" + std::to_string(number) +
               ",\"openDuration\":5}}";
    };
    const Reply added = site.Put(path, "{\"addLadderControlRelayReq\":{\"addladderControlRelayList\":[" + relay(1, 1) +
                                           "," + relay(1, 2) + "," + relay(2, 1) + "," + relay(1, 1) + "]}}");
    const std::string results = "/data/addLadderControlRelayResultRsp/addLadderControlRelayResultList";
    EXPECT_EQ(added.Int(results + "/2/resultCode"), 0);
    EXPECT_EQ(added.Int(results + "/3/resultCode"), 22);
    EXPECT_EQ(added.Int(results + "/3/relayNo"), 1);
    const auto find = [&](const std::string& verb, const std::string& relays, const std::string& devices) {
        return site
            .Send(verb, path,
                  "{\"ladderControlRelayReq\":{\"guidList\":[" + relays + "],\"deviceGuidList\":[" + devices + "]}}")
            .Texts("/data/ladderControlRelaydQueryResultList", "deviceName");
    };
    const std::string first = "\"" + added.Text(results + "/0/guid") + "\"";
    EXPECT_EQ(find("POST", "", "").size(), 3u);
    EXPECT_THAT(find("POST", first, "\"" + Device(2) + "\""),
                ElementsAre("Main entrance controller", "North stair controller"));
    const Reply modified = site.Put(path + "/" + added.Text(results + "/1/guid"),
                                    "{\"modifyladderControlRelayReq\":{\"name\":\"New\",\"ladderControlRelay\":{"
                                    "\"relayNo\":1}}}");
    EXPECT_EQ(modified.Code(), "3-22") << "another relay of the controller has the number";
    find("DELETE", "", "");
    EXPECT_EQ(find("POST", "", "").size(), 3u) << "nothing named means nothing";
    find("DELETE", first, "\"" + Device(2) + "\"");
    EXPECT_EQ(find("POST", "", "").size(), 1u);
}

} // namespace

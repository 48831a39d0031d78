// Users, groups, settings, log, topology, views and files of the local platform.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "Client.h"

namespace {

using test::Device;
using test::Reply;
using test::Site;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string kFramework = "framework/";
const std::string kInternal = "internal/framework/";
const std::string kFirstPassword = "Nexwire-2026";
constexpr std::int64_t kMinute = 60 * 1000;
constexpr int kUnknownGuid = 20;
constexpr int kInUse = 23;

class FrameworkTest : public testing::Test {
protected:
    std::string Ciphered(const std::string& text)
    {
        return site.Put(kInternal + "encryption", R"({"encryptionInfo":{"plaintextList":[")" + text + "\"]}}")
            .Text("/data/ciphertextList/0/ciphertext");
    }
    std::string Deciphered(const std::string& text)
    {
        return site.Put(kInternal + "decryption", R"({"decryptionInfo":{"ciphertextList":[")" + text + "\"]}}")
            .Text("/data/plaintextList/0/plaintext");
    }
    std::string Answers(const std::string& first, const std::string& second)
    {
        return R"([{"problemId":1,"safetyAnswer":")" + Ciphered(first) + R"("},{"problemId":3,"safetyAnswer":")" +
               Ciphered(second) + "\"}]";
    }
    /// @param answers  a list; looked at when the password is empty.
    Reply Check(const std::string& user, const std::string& password, const std::string& answers = "[]")
    {
        return site.Post(kFramework + "checkPassword", R"({"checkAnswer":{"userName":")" + user + R"(","password":")" +
                                                           (password.empty() ? "" : Ciphered(password)) +
                                                           R"(","answerList":)" + answers + "}}");
    }
    bool SignsIn(const std::string& user, const std::string& password)
    {
        return Check(user, password).Print("/data/checkAnswerResult/isPassed") == "true";
    }
    Reply Reset(const std::string& user, const std::string& old, const std::string& fresh,
                const std::string& answers = "[]")
    {
        return site.Put(kFramework + "resetPassword", R"({"resetPassword":{"userName":")" + user +
                                                          R"(","oldPassword":")" + (old.empty() ? "" : Ciphered(old)) +
                                                          R"(","answerList":)" + answers + R"(,"newPassword":")" +
                                                          Ciphered(fresh) + "\"}}");
    }
    Reply StoreAnswers(const std::string& user, const std::string& password, const std::string& answers)
    {
        return site.Put(kFramework + "safeProblem", R"({"safetyProblem":{"userName":")" + user + R"(","password":")" +
                                                        Ciphered(password) + R"(","answerList":)" + answers + "}}");
    }
    Reply Lock(int operation, const std::string& password = {})
    {
        return test::Client(site.Port())
            .Send("POST", "/7730/V1/framework/users/lockscreen",
                  R"({"lockScreenRequest":{"operateType":)" + std::to_string(operation) +
                      R"(,"userName":"","password":")" + (password.empty() ? "" : Ciphered(password)) +
                      R"(","lockMinutes":0}})");
    }
    Reply Token()
    {
        return test::Client(site.Port())
            .Send("POST", "/Tarvo/v1/framework/users/login/LoginToken", R"({"loginTokenRequest":{"clientType":0}})");
    }
    std::string SignedIn() { return site.Put(kInternal + "userInfo").Text("/data/currentUserInfo/userName"); }
    /// @param more  members of the condition, each with a comma in front.
    Reply Log(const std::string& more = {}, int page = 1, int size = 1000)
    {
        return site.Post("log/logs", R"({"logCodition":{"pageNo":)" + std::to_string(page) + R"(,"pageSize":)" +
                                         std::to_string(size) + more + "}}");
    }

    Site site;
};

constexpr const char* kFound = "/data/logFilterConditionSupported";
const std::string kEntries = std::string(kFound) + "/logInfoList";

TEST_F(FrameworkTest, PasswordsSignInAndWrongOnesShutOut)
{
    EXPECT_EQ(SignedIn(), "admin");
    EXPECT_TRUE(SignsIn("guard", kFirstPassword));
    EXPECT_EQ(SignedIn(), "guard");
    EXPECT_EQ(Check("nobody", kFirstPassword).Code(), "2-20");
    for (int left = 4; left >= 0; --left) {
        const Reply wrong = Check("security", "wrong-password");
        EXPECT_EQ(wrong.Print("/data/checkAnswerResult/isPassed"), "false");
        EXPECT_EQ(wrong.Int("/data/checkAnswerResult/remainTimes"), left);
        EXPECT_EQ(wrong.Int("/data/checkAnswerResult/lockSeconds"), left == 0 ? 900 : 0);
    }
    EXPECT_FALSE(SignsIn("security", kFirstPassword));
    EXPECT_EQ(SignedIn(), "guard");
    site.Advance(15 * kMinute);
    EXPECT_TRUE(SignsIn("security", kFirstPassword));

    // A password that did not travel enciphered is none.
    const Reply clear = site.Post(kFramework + "checkPassword",
                                  R"({"checkAnswer":{"userName":"guard","password":"Nexwire-2026","answerList":[]}})");
    EXPECT_EQ(clear.Print("/data/checkAnswerResult/isPassed"), "false");
    const std::string super = R"({"currentUserInfor":{"userGuid":"","userName":"admin"}})";
    EXPECT_EQ(test::Client(site.Port())
                  .Send("PUT", "/7730/V1/framework/users/issuperuser", super)
                  .Print("/data/currentUserInforRsp/isSuperUser"),
              "true");
}

TEST_F(FrameworkTest, ALockedScreenGivesNoTokens)
{
    ASSERT_TRUE(SignsIn("guard", kFirstPassword));
    EXPECT_EQ(Token().Text("/data/userResponseInfo/token").size(), 32u);
    EXPECT_EQ(Lock(1).Print("/data/userResponseInfo/isLocked"), "true");
    EXPECT_EQ(Token().Code(), "2-50");
    const Reply wrong = Lock(2, "wrong-password");
    EXPECT_EQ(wrong.Print("/data/userResponseInfo/isLocked"), "true");
    EXPECT_EQ(wrong.Int("/data/userResponseInfo/remainTimes"), 4);
    EXPECT_EQ(Lock(0).Print("/data/userResponseInfo/isLocked"), "true");
    EXPECT_EQ(Lock(2, kFirstPassword).Print("/data/userResponseInfo/isLocked"), "false");
    EXPECT_EQ(Token().Code(), "0-0");
}

TEST_F(FrameworkTest, APasswordIsResetByTheOldOneOrByAnswers)
{
    EXPECT_EQ(Reset("guard", "wrong-password", "Gatehouse-2027").Code(), "2-50");
    EXPECT_EQ(Reset("guard", kFirstPassword, "short").Code(), "2-10");
    EXPECT_TRUE(SignsIn("guard", kFirstPassword));
    EXPECT_EQ(Reset("guard", kFirstPassword, "Gatehouse-2027").Code(), "0-0");
    EXPECT_FALSE(SignsIn("guard", kFirstPassword));
    ASSERT_TRUE(SignsIn("guard", "Gatehouse-2027"));

    const auto isSet = [&] {
        return site.Post(kFramework + "checkUserSafeProblem").Print("/data/userSafeProblemIsSet/isSet");
    };
    EXPECT_EQ(isSet(), "false");
    EXPECT_EQ(Reset("guard", "", "Gatehouse-2028", "[]").Code(), "2-50") << "without answers nobody is known";
    EXPECT_EQ(Reset("guard", "", "Gatehouse-2028", Answers("", "")).Code(), "2-50");
    EXPECT_EQ(StoreAnswers("guard", "wrong-password", Answers("Bergen", "Fish")).Code(), "2-50");
    EXPECT_EQ(StoreAnswers("guard", "Gatehouse-2027", Answers("Bergen", "Fish")).Code(), "0-0");
    EXPECT_EQ(isSet(), "true");
    const Reply wrong = Check("guard", "", Answers("Bergen", "Soup"));
    EXPECT_EQ(wrong.Print("/data/checkAnswerResult/wrongProblemList"), "[3]");
    EXPECT_EQ(Check("guard", "", Answers("Bergen", "Fish")).Print("/data/checkAnswerResult/isPassed"), "true");
    EXPECT_EQ(Reset("guard", "", "Gatehouse-2028", Answers("Oslo", "Fish")).Code(), "2-50");
    EXPECT_EQ(Reset("guard", "", "Gatehouse-2028", Answers("Bergen", "Fish")).Code(), "0-0");
    EXPECT_TRUE(SignsIn("guard", "Gatehouse-2028"));
}

TEST(FrameworkFileTest, NothingSecretStandsInTheDatabaseTheLogOrAnAnswer)
{
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "nexwire-framework-test.db";
    const auto clean = [&] {
        for (const char* end : {"", "-wal", "-shm"}) {
            std::filesystem::remove(file.string() + end);
        }
    };
    clean();
    std::string seen;
    {
        Site site(file.string());
        const auto send = [&](const std::string& verb, const std::string& path, const std::string& body) {
            const Reply reply = site.Send(verb, path, body);
            seen += reply.body + "\n";
            return reply;
        };
        const auto ciphered = [&](const std::string& text) {
            return site.Put(kInternal + "encryption", R"({"encryptionInfo":{"plaintextList":[")" + text + "\"]}}")
                .Text("/data/ciphertextList/0/ciphertext");
        };
        const std::string old = ciphered(kFirstPassword);
        const std::string fresh = ciphered("Moonlight-77");
        const std::string answers = R"([{"problemId":1,"safetyAnswer":")" + ciphered("Lillehammer") +
                                    R"("},{"problemId":2,"safetyAnswer":")" + ciphered("Lillehammer") + "\"}]";
        send("PUT", kFramework + "resetPassword",
             R"({"resetPassword":{"userName":"admin","oldPassword":")" + old + R"(","answerList":[],"newPassword":")" +
                 fresh + "\"}}");
        send("PUT", kFramework + "safeProblem",
             R"({"safetyProblem":{"userName":"","password":")" + fresh + R"(","answerList":)" + answers + "}}");
        const std::string check =
            R"({"checkAnswer":{"userName":"admin","password":")" + fresh + R"(","answerList":[]}})";
        EXPECT_EQ(send("POST", kFramework + "checkPassword", check).Print("/data/checkAnswerResult/isPassed"), "true");
        send("PUT", "deviceManagement/setToken",
             R"({"cloudP2PAccountInfo":{"account":"site","password":"Moonlight-77","countryCode":"NO",)"
             R"("serverAddress":"","token":"t"}})");
        send("POST", kFramework + "users", {});
        send("PUT", kInternal + "userInfo", {});
        send("POST", "log/logs", R"({"logCodition":{"pageNo":1,"pageSize":1000}})");
        EXPECT_THAT(seen, HasSubstr("CUserResetPassword"));
        EXPECT_THAT(seen, Not(HasSubstr("_salt")));
    }
    for (const char* end : {"", "-wal"}) {
        std::ifstream bytes(file.string() + end, std::ios::binary);
        std::ostringstream all;
        all << bytes.rdbuf();
        seen += all.str();
    }
    EXPECT_THAT(seen, HasSubstr("reception@example.org")) << "the database was not read";
    for (const std::string& secret :
         {kFirstPassword, std::string("Moonlight-77"), std::string("Lillehammer"), std::string("555 0101")}) {
        EXPECT_EQ(seen.find(secret), std::string::npos) << secret;
    }
    clean();
}

TEST_F(FrameworkTest, TheListOfUsersHidesTelephones)
{
    const Reply users = site.Post(kFramework + "users");
    EXPECT_THAT(users.Texts("/data/userInfoList", "userName"), ElementsAre("admin", "security", "guard", "reception"));
    EXPECT_EQ(Deciphered(users.Text("/data/userInfoList/2/telephone")), "+47 555 0103");
    EXPECT_EQ(users.Text("/data/userInfoList/0/roleList/0/roleName"), "Super user");
    const auto exists = [&](const std::string& name) {
        return site.Post(kFramework + "userIsExist", R"({"userExist":{"userName":")" + name + "\"}}")
            .Print("/data/userIsExist/isExist");
    };
    EXPECT_EQ(exists("guard"), "true");
    EXPECT_EQ(exists("gua"), "false");
}

TEST_F(FrameworkTest, PermissionsFollowTheSignedInUser)
{
    const std::string item = R"({"permissionCode":"map","permissionName":"Maps","parentCode":"","componentId":"map",)"
                             R"("permissionType":0,"orderNo":1})";
    ASSERT_EQ(site.Put(kInternal + "permissions/items",
                       R"({"permissionItemInfos":{"permissionItemInfoList":[)" + item + "]}}")
                  .Code(),
              "0-0");
    ASSERT_TRUE(SignsIn("guard", kFirstPassword));
    const auto permitted = [&](const std::string& codes) {
        const Reply reply = site.Post(kFramework + "permissions",
                                      R"({"permissionCodeInfos":{"permissionCodeInfoList":[)" + codes + "]}}");
        std::string text;
        for (std::size_t i = 0; i < reply.Size("/data/permissionCodeInfoList"); ++i) {
            const std::string at = "/data/permissionCodeInfoList/" + std::to_string(i);
            text += reply.Text(at + "/permissionCode") + "=" + reply.Print(at + "/isPermitted") + " ";
        }
        return text;
    };
    EXPECT_EQ(permitted(R"({"permissionCode":"video"},{"permissionCode":"log"})"), "video=true log=false ");
    EXPECT_THAT(permitted(""), HasSubstr("access=false alarm=true log=false map=false "));
}

TEST_F(FrameworkTest, ComponentsRegisterSubscribeAndSendMail)
{
    const auto enlist = [&](const std::string& version) {
        return site
            .Put(
                kInternal + "register",
                R"({"componentRegisterInfo":{"componentId":"map","componentName":"Maps","componentType":5,"version":")" +
                    version + R"(","address":"","processId":7,"startTime":""}})")
            .Code();
    };
    EXPECT_EQ(enlist("1.0"), "0-0");
    EXPECT_EQ(enlist("1.1"), "0-0");
    const Reply components =
        site.Put(kInternal + "components",
                 R"({"queryComponentCondition":{"componentName":"","componentType":5,"onlineOnly":true}})");
    EXPECT_THAT(components.Texts("/data/componentIDList", "version"), ElementsAre("1.1"));

    const auto subscribe = [&](const std::string& types, const char* on) {
        return site
            .Put(kInternal + "messages",
                 R"({"subscribe":{"componentId":"map","messageTypeList":[)" + types + R"(],"isSubscribe":)" + on + "}}")
            .Code();
    };
    EXPECT_EQ(subscribe(R"("alarm")", "true"), "0-0");
    EXPECT_EQ(subscribe(R"("alarm","logout")", "true"), "0-0");
    EXPECT_EQ(site.Post(kInternal + "messages").Print("/data/subscribeList/0/messageTypeList"),
              R"(["alarm","logout"])");
    EXPECT_EQ(subscribe("", "false"), "0-0");
    EXPECT_EQ(site.Post(kInternal + "messages").Size("/data/subscribeList"), 0u);
    EXPECT_EQ(subscribe(R"("weather")", "true"), "2-10");

    const std::string mail = R"(,"copyList":[],"subject":"Door 3","content":"stands open","isHtml":false,)"
                             R"("attachmentList":[]}})";
    EXPECT_EQ(
        site.Put(kInternal + "emails", R"({"email":{"receiverList":["a@example.org","b@example.org"])" + mail).Code(),
        "0-0");
    EXPECT_EQ(site.Put(kInternal + "emails", R"({"email":{"receiverList":[])" + mail).Code(), "2-10");
    const Reply mails = site.Post(kInternal + "emails");
    EXPECT_EQ(mails.Size("/data/emailList"), 1u);
    EXPECT_EQ(mails.Text("/data/emailList/0/receiverList/1") + ": " + mails.Text("/data/emailList/0/content"),
              "b@example.org: stands open");
}

TEST_F(FrameworkTest, SettingsAreKept)
{
    const auto settings = [&] { return site.Post(kFramework + "system/general/configs"); };
    const std::string at = "/data/systemServerConfig/";
    EXPECT_EQ(settings().Text(at + "systemName"), "Local platform");
    ASSERT_EQ(site.Put(kFramework + "system/general/configs",
                       R"({"systemConfigAdd":{"systemName":"Harbour","language":"de-DE","timeZone":"+01:00",)"
                       R"("logKeepDays":30,"alarmKeepDays":60,"timeSync":false,"timeSyncInterval":10,)"
                       R"("autoLogin":true,"autoBackup":false}})")
                  .Code(),
              "0-0");
    ASSERT_EQ(site.Put(kFramework + "serverlang", R"({"setserverlang":{"language":"en-US"}})").Code(), "0-0");
    EXPECT_EQ(settings().Text(at + "systemName"), "Harbour");
    EXPECT_EQ(settings().Text(at + "language"), "en-US");
    EXPECT_EQ(settings().Int(at + "logKeepDays"), 30);
    EXPECT_EQ(site.Put(kFramework + "system/general/configs", R"({"systemConfigAdd":{"logKeepDays":0}})").Code()[0],
              '2');
    EXPECT_EQ(settings().Int(at + "logKeepDays"), 30);
}

const std::string kGroups = "framework/groups";
const std::string kAll = "60000000000000000000000000000001";
const std::string kGround = "60000000000000000000000000000002";
const std::string kEntrances = "60000000000000000000000000000003";

class GroupTest : public FrameworkTest {
protected:
    Reply Elements(const std::string& group, const std::string& more = {})
    {
        return site.Post(kGroups + "/" + group + "/elements",
                         R"({"queryElementsCondition":{"elementName":"","elementStatus":0,"pageNo":1,"pageSize":5)" +
                             more + "}}");
    }
    Reply Import(const std::string& members)
    {
        return site.Put(kInternal + "groups", R"({"groupImport":{)" + members + "}}");
    }
    std::int64_t Count(const std::string& group)
    {
        return site
            .Post(kGroups + "/" + group, R"({"queryGroupCondition":{"parentGroupGuid":"","groupName":"",)"
                                         R"("groupType":0,"includeSub":true}})")
            .Int("/data/elementNum");
    }
};

TEST_F(GroupTest, ElementsFollowTheResources)
{
    const Reply doors = Elements(kAll, R"(,"elementTypeList":[5])");
    EXPECT_EQ(doors.Size("/data/elementList"), 5u);
    const std::int64_t doorsBefore = doors.Int("/data/total");
    EXPECT_GT(doorsBefore, 14);
    const Reply named = Elements(kAll, R"(,"elementTypeList":[6])");
    EXPECT_EQ(named.Text("/data/elementList/2/elementName"), "Main entrance door 2 in");
    EXPECT_EQ(named.Int("/data/elementList/2/elementNo"), 3);

    // The device that is out of reach shows.
    EXPECT_THAT(site.Post(kGroups + "/" + kAll + "/elements",
                          R"({"queryElementsCondition":{"elementTypeList":[1],"elementStatus":2}})")
                    .Texts("/data/elementList", "elementGuid"),
                ElementsAre(Device(14)));
}

TEST_F(GroupTest, ImportMovesADeviceWithItsParts)
{
    const std::int64_t all = Count(kAll);
    const Reply moved =
        Import(R"("groupGuid":")" + kEntrances + R"(","groupName":"","parentGroupGuid":"","deviceGuidList":[")" +
               Device(1) + R"(","nobody"])");
    const std::int64_t parts = moved.Int("/data/groupImportResult/elementNum");
    EXPECT_GT(parts, 6) << "the device, two doors, four readers";
    EXPECT_EQ(moved.Int("/data/groupImportResult/operationResultList/0/resultCode"), 0);
    EXPECT_EQ(moved.Int("/data/groupImportResult/operationResultList/1/resultCode"), 21);
    EXPECT_EQ(Count(kEntrances), parts);
    EXPECT_EQ(Count(kAll), all - parts);
    EXPECT_EQ(Elements(kGround, R"(,"includeSub":false)").Int("/data/total"), 0);
    EXPECT_EQ(Elements(kGround, R"(,"includeSub":true)").Int("/data/total"), parts);
    EXPECT_EQ(site.Post(kInternal + "groups",
                        R"({"queryGroupByResourceCondition":{"resourceGuid":")" + Device(1) + R"(","resourceType":0}})")
                  .Text("/data/groupList/0/groupName"),
              "Entrances");

    const Reply made = Import(R"("groupGuid":"","groupName":"Yard","parentGroupGuid":")" + kGround +
                              R"(","deviceGuidList":[")" + Device(2) + R"("])");
    const auto below = [&](const char* sub) {
        return site
            .Post(kGroups, R"({"queryGroupCondition":{"parentGroupGuid":")" + kGround +
                               R"(","groupName":"","groupType":0,"includeSub":)" + sub + "}}")
            .Texts("/data/groupList", "groupName");
    };
    EXPECT_THAT(below("true"), ElementsAre("Entrances", "Yard"));
    const std::string yard = made.Text("/data/groupImportResult/groupGuid");
    Import(R"("groupGuid":"","groupName":"Shed","parentGroupGuid":")" + yard + R"(","deviceGuidList":[])");
    EXPECT_THAT(below("true"), ElementsAre("Entrances", "Yard", "Shed"));
    EXPECT_THAT(below("false"), ElementsAre("Entrances", "Yard"));
    EXPECT_EQ(Import(R"("groupGuid":"","groupName":"","parentGroupGuid":"","deviceGuidList":[])").Code(), "2-7");
}

TEST_F(GroupTest, AnElementIsRenamedAndItsStateIsSet)
{
    const std::string path = kGroups + "/" + kAll + "/elements/" + Device(3);
    EXPECT_EQ(site.Put(path, R"({"elementModify":{"elementName":"Stair","orderNo":4,"description":""}})")
                  .Text("/data/elementName"),
              "Stair");
    EXPECT_EQ(site.Put(kGroups + "/" + kAll + "/elements/status",
                       R"({"syncGroupAndElement":{"elementType":1,"elementStatus":3,"includeSub":false}})")
                  .Code(),
              "0-0");
    const Reply element = site.Post(path, R"({"querySingleElementCondition":{"elementType":0,"needStatus":true}})");
    EXPECT_EQ(element.Text("/data/element/elementName"), "Stair");
    EXPECT_EQ(element.Int("/data/element/elementStatus"), 3);
    const std::string asked = R"({"queryElementInfo":{"elementGuid":")" + Device(3) + "\"}}";
    for (const std::string& where : {"elements/" + Device(3), "groups/" + kAll}) {
        EXPECT_EQ(site.Post(kInternal + where, asked).Text("/data/elementName"), "Stair") << where;
    }
}

TEST_F(FrameworkTest, TheLogTellsWhatWasAskedAndWhatCameOfIt)
{
    const auto addView = [&](const std::string& name) {
        return site.Put("video/views", R"({"viewParam":{"viewName":")" + name +
                                           R"(","viewgroupGuid":"","teamNo":"","rows":1,"columns":1,)"
                                           R"("viewWindowList":[],"pollingInterval":0,"isDefault":false,)"
                                           R"("description":""}})");
    };
    ASSERT_TRUE(SignsIn("guard", kFirstPassword));
    EXPECT_FALSE(SignsIn("security", "wrong-password"));
    site.Advance(kMinute);
    EXPECT_EQ(addView("Yard").Code(), "0-0");
    EXPECT_NE(addView("Yard").Code(), "0-0");
    site.Post("video/views");
    site.Put("video/views", "{broken");

    const Reply all = Log(R"(,"ascending":true)");
    EXPECT_THAT(all.Texts(kEntries, "userName"), ElementsAre("guard", "security", "guard", "guard", "guard"));
    EXPECT_THAT(all.Texts(kEntries, "moduleName"), ElementsAre("framework", "framework", "video", "video", "video"));
    std::string results;
    for (int i = 0; i < 5; ++i) {
        results += std::to_string(all.Int(kEntries + "/" + std::to_string(i) + "/logResult"));
    }
    EXPECT_EQ(results, "12122") << "what was refused is told, what only reads is not";
    EXPECT_EQ(all.Int(kEntries + "/0/logType"), 1);
    EXPECT_EQ(all.Text(kEntries + "/2/operation"), "CMainViewRequest::addView");
    EXPECT_EQ(all.Text(kEntries + "/2/logTime"), "2024-01-01T00:01:00+00:00");
    EXPECT_EQ(all.Print(std::string(kFound) + "/userNameList"), R"(["guard","security"])");
    EXPECT_EQ(all.Print(std::string(kFound) + "/logTypeList"), "[1,2]");
    EXPECT_EQ(all.Text(std::string(kFound) + "/latestTime"), "2024-01-01T00:01:00+00:00");
}

TEST_F(FrameworkTest, TheLogIsSearchedByEveryConditionAndPaged)
{
    const auto write = [&](const std::string& minute, const std::string& user, int type, int result,
                           const std::string& content) {
        return site
            .Put("log/logs", R"({"log":{"logTime":"2023-06-01T10:)" + minute + R"(:00+00:00","userName":")" + user +
                                 R"(","clientAddress":"192.0.2.77","logType":)" + std::to_string(type) +
                                 R"(,"moduleName":"door","operation":"open","resourceGuid":"","resourceName":"",)" +
                                 R"("logResult":)" + std::to_string(result) + R"(,"content":")" + content + "\"}}")
            .Code();
    };
    for (int i = 0; i < 10; ++i) {
        const std::string number = std::to_string(i);
        ASSERT_EQ(write("0" + number, i % 2 == 0 ? "ada" : "ben", 4 + i % 3, 1 + i % 2, "Entry " + number), "0-0");
    }
    EXPECT_EQ(write("77", "ada", 4, 1, "x"), "14-10");
    const auto contents = [&](const std::string& more) { return Log(more).Texts(kEntries, "content"); };
    EXPECT_THAT(contents(R"(,"beginTime":"2023-06-01T12:03:00+02:00","endTime":"2023-06-01T10:04:00+00:00")"),
                ElementsAre("Entry 4", "Entry 3"));
    EXPECT_THAT(contents(R"(,"userNameList":["ben"],"logTypeList":[5,6])"),
                ElementsAre("Entry 7", "Entry 5", "Entry 1"));
    EXPECT_THAT(contents(R"(,"logResult":2,"keyword":"ENTRY 9")"), ElementsAre("Entry 9"));
    EXPECT_THAT(contents(R"(,"moduleList":["video"])"), IsEmpty());
    const Reply page = Log(R"(,"ascending":true)", 3, 4);
    EXPECT_THAT(page.Texts(kEntries, "content"), ElementsAre("Entry 8", "Entry 9"));
    EXPECT_EQ(page.Int(std::string(kFound) + "/total"), 10);
    EXPECT_EQ(page.Int(std::string(kFound) + "/pageNo"), 3);
    EXPECT_EQ(Log(R"(,"beginTime":"yesterday")").Code(), "14-10");

    const Reply backup = site.Post("log/backup");
    EXPECT_THAT(backup.Text(std::string(kFound) + "/backupPath"), testing::StartsWith("backup/log-"));
    EXPECT_EQ(backup.Int(std::string(kFound) + "/total"), 10) << "the log itself stays";
}

const std::string kTopologies = "topologyManagement/topologies/";

TEST_F(FrameworkTest, ARefreshOfTheTopologyProgressesAndFindsNewDevices)
{
    const auto nodes = [&](const std::string& more = {}) {
        return site.Post(kTopologies + "deviceNodes",
                         R"({"queryCondition":{"nodeName":"","address":"","nodeType":0,"nodeStatus":0)" + more + "}}");
    };
    const auto progress = [&](const char* reset) {
        return site.Post(kTopologies + "progress", std::string(R"({"resetPercent":{"isReset":)") + reset + "}}");
    };
    const std::size_t before = nodes().Size("/data/deviceNodeList");
    EXPECT_EQ(before, 14u + 3u + 2u) << "devices; gateway, core switch, server; two access switches";
    EXPECT_EQ(progress("false").Int("/data/progress/percent"), 100);
    EXPECT_EQ(progress("false").Int("/data/progress/refreshState"), 0);
    EXPECT_EQ(progress("true").Int("/data/progress/percent"), 0);
    std::vector<std::int64_t> seen;
    for (int i = 0; i < 4; ++i) {
        site.Advance(1000);
        seen.push_back(progress("false").Int("/data/progress/percent"));
    }
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_GT(seen.front(), 0);
    EXPECT_LT(seen.front(), 100);
    EXPECT_EQ(seen.back(), 100);
    EXPECT_EQ(progress("false").Int("/data/progress/refreshState"), 2);
    EXPECT_EQ(nodes().Size("/data/deviceNodeList"), before);

    EXPECT_THAT(site.Post(kTopologies + "deviceNodes", R"({"queryCondition":{"nodeType":5,"nodeStatus":2}})")
                    .Texts("/data/deviceNodeList", "deviceGuid"),
                ElementsAre(Device(14)));
    // Hops follow the root.
    const std::string node = kTopologies + "deviceNodes/" + Device(1);
    EXPECT_EQ(site.Post(node).Int("/data/hops"), 2);
    const Reply moved = site.Put(kTopologies + "resetRoot",
                                 R"({"rootNode":{"nodeGuid":")" + Device(1) + R"(","nodeName":"","address":""}})");
    EXPECT_EQ(moved.Size("/data/deviceNodeList"), before);
    EXPECT_EQ(site.Post(node).Int("/data/hops"), 0);
    EXPECT_EQ(site.Post(kTopologies + "resetRoot").Text("/data/nodeName"), "Main entrance controller");
    EXPECT_EQ(site.Put(kTopologies + "resetRoot", R"({"rootNode":{"nodeGuid":"x","nodeName":"","address":""}})").Code(),
              "15-20");
}

TEST_F(FrameworkTest, PortsAlarmForLostLinksAndStrangers)
{
    // The switch of the device that is out of reach, by the line that leads to it.
    const Reply lines = site.Post(kTopologies + "lines");
    std::string lost;
    std::string guarded;
    std::int64_t port = 0;
    for (std::size_t i = 0; i < lines.Size("/data/lineList"); ++i) {
        const std::string at = "/data/lineList/" + std::to_string(i);
        if (lines.Text(at + "/endNodeGuid") == Device(14)) {
            lost = lines.Text(at + "/beginNodeGuid");
            EXPECT_EQ(lines.Int(at + "/lineStatus"), 2);
            EXPECT_EQ(site.Post(kTopologies + "lines/" + lines.Text(at + "/lineGuid")).Int("/data/lineStatus"), 2);
        } else if (lines.Text(at + "/endNodeGuid") == Device(1)) {
            guarded = lines.Text(at + "/beginNodeGuid");
            port = lines.Int(at + "/beginPortNo");
        }
    }
    const auto alarms = [&](const std::string& node) {
        return site.Post("internal/topologyManagement/topologies/" + node + "/alarms");
    };
    EXPECT_EQ(alarms(lost).Int("/data/switchAlarmList/0/alarmType"), 1);
    EXPECT_EQ(alarms(guarded).Size("/data/switchAlarmList"), 0u);
    const auto guard = [&](const std::string& address, int action) {
        return site
            .Put(kTopologies + "portSecurity", R"({"portSecurity":{"portSecurityItemList":[{"nodeGuid":")" + guarded +
                                                   R"(","portNo":)" + std::to_string(port) +
                                                   R"(,"enable":true,"maxMacNum":1,"macAddressList":[")" + address +
                                                   R"("],"violationAction":)" + std::to_string(action) + "}]}}")
            .Code();
    };
    EXPECT_EQ(guard("02:00:00:00:00:01", 1), "0-0");
    EXPECT_EQ(alarms(guarded).Int("/data/switchAlarmList/0/alarmType"), 3);
    EXPECT_EQ(alarms(guarded).Int("/data/switchAlarmList/0/portNo"), port);
    EXPECT_EQ(site.Post(kTopologies + "portSecurity").Int("/data/portSecurityStateList/0/violationNum"), 1);
    EXPECT_EQ(guard("02:00:00:00:00:01", 0), "0-0");
    EXPECT_EQ(alarms(guarded).Size("/data/switchAlarmList"), 0u) << "dropped silently";
    EXPECT_EQ(guard(site.Post(kTopologies + "deviceNodes/" + Device(1)).Text("/data/macAddress"), 1), "0-0");
    EXPECT_EQ(alarms(guarded).Size("/data/switchAlarmList"), 0u);
    EXPECT_EQ(alarms("nobody").Code(), "15-20");
}

TEST_F(FrameworkTest, ViewsStandInGroupsAndOutliveThem)
{
    const std::string group =
        site.Put("video/viewgroups",
                 R"({"viewgroupAdd":{"viewgroupName":"Gates","parentGuid":"","orderNo":1,"viewGuidList":[]}})")
            .Text("/data/viewgroupAddRsp/viewgroupGuid");
    const auto view = [&](const std::string& name, const std::string& team) {
        return R"({"viewParam":{"viewName":")" + name + R"(","viewgroupGuid":")" + group + R"(","teamNo":")" + team +
               R"(","rows":1,"columns":2,"viewWindowList":[{"windowNo":2,"row":0,"column":1,"rowSpan":1,)"
               R"("columnSpan":1,"channelGuid":"c","channelName":"Gate","streamType":1,"isSoundOn":false}],)"
               R"("pollingInterval":0,"isDefault":false,"description":""}})";
    };
    const Reply added = site.Put("video/views", view("North", "T1"));
    const std::string guid = added.Text("/data/viewResult/viewGuid");
    EXPECT_EQ(added.Text("/data/viewResult/modifyTime"), "2024-01-01T00:00:00+00:00");
    EXPECT_EQ(site.Put("video/views", view("South", "")).Code(), "0-0");
    EXPECT_THAT(site.Put("video/views/team/T1").Texts("/data/viewResoponseList", "viewName"), ElementsAre("North"));
    EXPECT_EQ(site.Put("video/views/" + guid, view("North gate", "T1")).Text("/data/viewResult/viewName"),
              "North gate");
    EXPECT_EQ(site.Post("video/views/" + guid).Int("/data/viewWindowList/0/windowNo"), 2);

    EXPECT_EQ(site.Delete("video/viewgroups", R"({"viewgroupDelete":{"viewgroupGuidList":[")" + group + "\"]}}").Code(),
              "0-0");
    EXPECT_EQ(site.Post("video/viewgroups").Size("/data/viewgroupList"), 0u);
    EXPECT_THAT(site.Post("video/views").Texts("/data/viewResoponseList", "viewgroupGuid"), ElementsAre("", ""));
    const Reply removed = site.Delete("video/views", R"({"removeView":{"viewGuidList":[")" + guid + R"(","nobody"]}})");
    EXPECT_EQ(removed.Int("/data/viewResultWithCodeList/0/resultCode"), 0);
    EXPECT_EQ(removed.Int("/data/viewResultWithCodeList/1/resultCode"), kUnknownGuid);
    EXPECT_EQ(site.Post("video/views").Size("/data/viewResoponseList"), 1u);
}

TEST_F(FrameworkTest, RecordingTemplatesAreKeptByWeek)
{
    const std::string allDay = "72000000000000000000000000000001";
    const auto item = [](int operation, const std::string& guid, const std::string& name) {
        return R"({"operateType":)" + std::to_string(operation) + R"(,"templateGuid":")" + guid +
               R"(","templateName":")" + name +
               R"(","templateType":3,"recordDayList":[{"weekday":6,"recordSegmentList":[{"beginTime":"08:00:00",)"
               R"("endTime":"12:00:00","recordType":"motion"}]}],"description":""})";
    };
    const auto set = [&](const std::string& items) {
        return site.Put("video/templates", R"({"modifyTemplates":{"modifyTemplateList":[)" + items + "]}}");
    };
    const Reply done = set(item(0, "", "Saturday") + "," + item(1, "nobody", "x") + "," + item(2, allDay, "All day"));
    const std::string guid = done.Text("/data/templateResultList/0/templateGuid");
    EXPECT_EQ(done.Int("/data/templateResultList/0/resultCode"), 0);
    EXPECT_EQ(done.Int("/data/templateResultList/1/resultCode"), kUnknownGuid);
    EXPECT_EQ(done.Int("/data/templateResultList/2/resultCode"), kInUse);
    EXPECT_EQ(set(item(1, guid, "Weekend")).Int("/data/templateResultList/0/resultCode"), 0);
    const Reply kept = site.Post("video/templates/" + guid);
    EXPECT_EQ(kept.Text("/data/templateInfo/templateName"), "Weekend");
    EXPECT_EQ(kept.Text("/data/templateInfo/recordDayList/0/recordSegmentList/0/recordType"), "motion");
    const auto names = [&] {
        return site.Post("video/templates", R"({"templateQueryCondition":{"templateName":"","templateType":3}})")
            .Texts("/data/templateResponseList", "templateName");
    };
    EXPECT_THAT(names(), ElementsAre("Weekend"));
    EXPECT_EQ(set(item(2, guid, "")).Int("/data/templateResultList/0/resultCode"), 0);
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(FrameworkTest, FilesAreFoundByChannelTypeAndTime)
{
    const auto file = [](const std::string& guid, const std::string& channel, int type, const std::string& hour) {
        return R"({"fileGuid":")" + guid + R"(","fileName":"file )" + guid + R"(","filePath":"/f/)" + guid +
               R"(","channelGuid":")" + channel + R"(","channelName":"","fileType":)" + std::to_string(type) +
               R"(,"beginTime":"2023-06-01T)" + hour + R"(:00:00+00:00","endTime":"2023-06-01T)" + hour +
               R"(:30:00+00:00","fileSize":5,"isLocked":false})";
    };
    const auto notify = [&](int type, const std::string& files) {
        return site.Put("internal/video/videoFileNotify", R"({"localFileNotify":{"notifyType":)" +
                                                              std::to_string(type) + R"(,"localFileInfoList":[)" +
                                                              files + "]}}");
    };
    const Reply told =
        notify(0, file("1", "A", 1, "08") + "," + file("2", "A", 2, "09") + "," + file("3", "B", 1, "10"));
    EXPECT_EQ(told.Int("/data/fileNotifyResult/successNum"), 3);
    EXPECT_EQ(told.Print("/data/fileNotifyResult/fileGuidList"), R"(["1","2","3"])");
    const auto found = [&](const std::string& condition) {
        return site.Post("internal/video/localFileQuery", R"({"localFileQuery":{)" + condition + "}}")
            .Texts("/data/localFileQueryResult/localFileInfoList", "fileGuid");
    };
    EXPECT_THAT(found(R"("channelGuidList":["A","C"])"), ElementsAre("1", "2"));
    EXPECT_THAT(found(R"("channelGuidList":[],"fileType":1)"), ElementsAre("1", "3"));
    EXPECT_THAT(found(R"("beginTime":"2023-06-01T08:30:00+00:00","endTime":"2023-06-01T09:45:00+00:00")"),
                ElementsAre("2"));
    EXPECT_THAT(site.Send("GET", "internal/video/locaFile",
                          R"({"localFile":{"channelGuid":"B","fileType":0,"beginTime":"","endTime":""}})")
                    .Texts("/data/localFileResult/localFileInfoList", "fileGuid"),
                ElementsAre("3"));
    const Reply gone = notify(2, file("1", "A", 1, "08") + "," + file("9", "A", 1, "08"));
    EXPECT_EQ(gone.Int("/data/fileNotifyResult/successNum"), 1);
    EXPECT_EQ(gone.Int("/data/fileNotifyResult/failedNum"), 1);
    EXPECT_THAT(found(R"("fileName":"FILE")"), ElementsAre("2", "3"));
}

TEST_F(FrameworkTest, PicturesAreBytesAndStoredFilesGetAddresses)
{
    const Reply picture =
        site.Post("video/picStorage", R"({"picStorage":{"picUrl":"a","storageServerGuid":"","width":0,"height":0}})");
    EXPECT_EQ(picture.status, 200u);
    EXPECT_EQ(picture.body.substr(0, 3), "\xFF\xD8\xFF");
    EXPECT_EQ(picture.body.size(), 20480u);

    const std::string map =
        R"({"filePathMapUrl":{"storageServerGuid":"","filePathList":["/a","/b"],"validMinutes":30}})";
    const Reply urls = site.Post("storageServer/filePathMapUrl", map);
    EXPECT_THAT(urls.Texts("/data/fileUrlList", "expireTime"), Each(std::string("2024-01-01T00:30:00+00:00")));
    const std::string drop =
        R"({"deletefilePathMapUrl":{"urlList":[")" + urls.Text("/data/fileUrlList/1/url") + "\"]}}";
    EXPECT_EQ(site.Delete("storageServer/filePathMapUrl", drop).Code(), "0-0");
    EXPECT_NE(site.Delete("storageServer/filePathMapUrl", drop).Code(), "0-0");
}

} // namespace

// Files of the register, answers that are handed out as they stand, and structures that go out and come back.

#include <gtest/gtest.h>

#include "nexwire/Personnel/Credential.h"
#include "nexwire/Personnel/PersonFile.h"
#include "nexwire/Personnel/PersonGroup.h"
#include "nexwire/Personnel/Synchronous.h"
#include "support/StubExecutor.h"
#include "support/TempFolder.h"

namespace {

using namespace nexwire;
using namespace protocol::personnelcommon;

TEST(PersonsFile, GoesUpUnderAnIdentifierOfItsOwn)
{
    const TempFolder folder;
#ifdef _WIN32 // It has no such names.
    const std::string file = folder.Write("persons 'new'.csv", "personNo,name\n1,Ada\n");
    const std::string name = "persons 'new'.csv";
#else
    const std::string file = folder.Write("persons \"new\".csv", "personNo,name\n1,Ada\n");
    const std::string name = "persons %22new%22.csv";
#endif
    test::Library library;
    auto progress = std::make_shared<int>(7);
    std::string first;
    std::string second;
    ASSERT_TRUE(PersonsFileComm::requestUpload(progress, first, file));
    const RequestParams& request = library.wire.Last();
    EXPECT_EQ(request.url, "/7730/v1/personalManagement/uploadFile");
    EXPECT_EQ(request.method, 1);
    EXPECT_EQ(first.size(), 32u);
    EXPECT_EQ(request.headers.at("query"), "uploadGuid=" + first);
    EXPECT_EQ(request.params.at("Content-Type"),
              "multipart/form-data; boundary=-----------------------------7e231b2b250806");
    EXPECT_NE(request.body.find("filename=\"" + name + "\"\r\nContent-Type: text/csv\r\n\r\npersonNo,name\n"),
              std::string::npos);
    EXPECT_EQ(*progress, 100);
    ASSERT_TRUE(PersonsFileComm::requestUpload(nullptr, second, file));
    EXPECT_NE(first, second);
}

TEST(PersonsFile, AnUploadThatFailsHandsOutNoIdentifier)
{
    const TempFolder folder;
    test::Library library;
    const auto progress = std::make_shared<int>(0);
    std::string guid = "before";
    EXPECT_FALSE(PersonsFileComm::requestUpload(progress, guid, folder.File("missing.csv")));
    EXPECT_FALSE(PersonsFileComm::requestUpload(progress, guid, folder.Write("empty.csv", "")));
    EXPECT_TRUE(library.wire.requests.empty());

    library.wire.answers.push_back({R"({"code":"4-19","msg":"no room"})", false, {}});
    EXPECT_FALSE(PersonsFileComm::requestUpload(progress, guid, folder.Write("persons.csv", "x")));
    EXPECT_EQ(Keel::Error::GetLastError().number, 19);
    EXPECT_EQ(guid, "before");
    EXPECT_EQ(*progress, 0);
}

TEST(AnswersAsTheyStand, AreHandedOutOnlyWhenTheyAreEnvelopes)
{
    test::Library library;
    // Whatever stands between the members is handed out, too, and so is a refusal.
    const std::string body = "{ \"code\" : \"4-7\",\n\"data\":{\"progress\":40,\"extra\":[1]} }\n";
    library.wire.otherwise = body;
    std::string text = "before";
    SynchronouProgressData progress;
    ASSERT_TRUE(SynchronousProgressComm::request(progress, "t", text));
    EXPECT_EQ(text, body);
    EXPECT_EQ(progress.progress, 40);
    text.clear();
    ASSERT_TRUE(PersonsFileComm::requestTemplate(text));
    EXPECT_EQ(text, body);

    for (const char* const unreadable : {"", "<html>", "{\"code\":\"0-0\"} x"}) {
        library.wire.otherwise = unreadable;
        EXPECT_FALSE(SynchronousProgressComm::request(progress, "t", text)) << unreadable;
        EXPECT_FALSE(PersonsFileComm::requestTemplate(text)) << unreadable;
        EXPECT_EQ(text, body);
        EXPECT_EQ(progress.progress, 40);
    }
}

TEST(ThereAndBack, TheAnswersMembersReplaceWhatWasSent)
{
    test::Library library;
    PersonPasswordStatusChange change;
    change.personnelGuidList = {"p"};
    change.status = 2;
    library.wire.AnswerWith(R"({"code":"0-0","data":{"personnelGuidList":["p"],"deviceGuidList":["d","e"]}})");
    ASSERT_TRUE(PersonPwdStatusChange::request(change));
    EXPECT_EQ(change.deviceGuidList, (std::vector<std::string>{"d", "e"}));
    EXPECT_EQ(change.status, 2); // Not in the answer.
    EXPECT_NE(library.wire.Last().body.find("\"status\":\t2"), std::string::npos);
}

TEST(ThereAndBack, AnAnswerWithoutMembersLeavesWhatWasSent)
{
    test::Library library;
    protocol::PerGroupMemberInfoData groups;
    groups.deviceGuid = "d/1";
    groups.perGroupMemberInfoList.resize(2);
    for (const char* const answer : {R"({"code":"0-0"})", R"({"code":"0-0","data":{}})", R"({"code":"0-0","data":[1]})",
                                     R"({"code":"4-7","data":{"result":"other"}})", "{}"}) {
        library.wire.AnswerWith(answer);
        EXPECT_TRUE(CSetPerGroupMember::request(groups)) << answer;
        EXPECT_EQ(groups.deviceGuid, "d/1") << answer;
        EXPECT_EQ(groups.perGroupMemberInfoList.size(), 2u) << answer;
    }
    library.wire.AnswerWith("<html>");
    EXPECT_FALSE(CSetPerGroupMember::request(groups));
    library.wire.Fail();
    EXPECT_FALSE(CSetPerGroupMember::request(groups));
    EXPECT_EQ(groups.perGroupMemberInfoList.size(), 2u);
    EXPECT_EQ(library.wire.Last().url, "/7730/v1/accessController/belongGroup/devices/d/1");
}

} // namespace

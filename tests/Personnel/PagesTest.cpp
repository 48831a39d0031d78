// Persons and credentials that devices hold, page by page.

#include <gtest/gtest.h>

#include "Batch.h"
#include "nexwire/Personnel/Synchronous.h"

namespace {

using namespace nexwire;
using test::Page;

std::string Person(const std::string& number)
{
    return R"({"userInfo":{"employeeNo":")" + number + R"(","valid":{"enable":true},"belongGroup":[2,3]}})";
}

struct Persons {
    protocol::UserInfoSearch found;
    test::Conversation talk;

    bool Ask()
    {
        return SynchronousPersonComm::request(found, talk.request, "D1", talk.guid, talk.finished, talk.error);
    }

    std::string Numbers() const
    {
        std::string text;
        for (const protocol::DeviceUserInfo& person : found.userInfoList) {
            text += person.employeeNo + " ";
        }
        return text;
    }
};

TEST(Pages, AccumulateInTheOrderReceivedUntilFinished)
{
    test::Library library;
    Persons persons;
    persons.found.searchID = "mine";
    library.wire.AnswerWith(Page("b", false, {{Person("2")}, {Person("1")}}));
    library.wire.AnswerWith(Page("b", false, {}));
    library.wire.AnswerWith(Page("b", false, {{Person("4")}}));
    library.wire.AnswerWith(Page("c", true, {{Person("3")}}));
    int calls = 0;
    while (!persons.talk.finished && calls < 10) {
        ASSERT_TRUE(persons.Ask());
        persons.talk.request.guid = persons.talk.guid;
        ++calls;
    }
    EXPECT_EQ(calls, 4);
    EXPECT_EQ(persons.Numbers(), "2 1 4 3 ");
    EXPECT_EQ(persons.talk.guid, "c");
    EXPECT_EQ(persons.found.searchID, "mine");
    EXPECT_TRUE(persons.found.userInfoList.front().valid.enable);
    EXPECT_EQ(persons.found.userInfoList.front().belongGroup, (std::vector<std::int32_t>{2, 3}));
    EXPECT_EQ(library.wire.Last().url, "/7730/v1/internal/deviceManagement/devices/D1/batchPassThrough");
    EXPECT_NE(library.wire.Last().body.find("\"guid\":\t\"b\""), std::string::npos);
}

TEST(Pages, ElementsWithACodeArePassedOver)
{
    test::Library library;
    Persons persons;
    library.wire.AnswerWith(Page("b", true, {{Person("1")}, {"", 23}, {Person("3"), -1}, {Person("4")}}));
    ASSERT_TRUE(persons.Ask());
    EXPECT_EQ(persons.Numbers(), "1 4 ");
}

TEST(Pages, APageThatBreaksInTheMiddleKeepsWhatCameBefore)
{
    test::Library library;
    Persons persons;
    library.wire.AnswerWith(Page("b", true, {{Person("1")}, {"{\"userInfo\":"}, {Person("3")}}));
    EXPECT_FALSE(persons.Ask());
    EXPECT_EQ(persons.Numbers(), "1 ");
    EXPECT_EQ(persons.talk.guid, "before");
    EXPECT_FALSE(persons.talk.finished);
    EXPECT_NE(persons.talk.error, "");

    // The same page again, as the request for the previous data gives it, is simply appended.
    library.wire.AnswerWith(Page("b", true, {{Person("1")}}));
    ASSERT_TRUE(persons.Ask());
    EXPECT_EQ(persons.Numbers(), "1 1 ");
}

TEST(Pages, TheErrorTextTellsWhyThereIsNoPage)
{
    Persons persons;
    EXPECT_FALSE(persons.Ask());
    EXPECT_NE(persons.talk.error, "");

    test::Library library;
    library.wire.Fail();
    EXPECT_FALSE(persons.Ask());
    EXPECT_EQ(persons.talk.error, "stub transport failure");

    library.wire.AnswerWith("<html>");
    EXPECT_FALSE(persons.Ask());
    EXPECT_NE(persons.talk.error, "stub transport failure");
    EXPECT_NE(persons.talk.error, "");
    EXPECT_EQ(persons.Numbers(), "");
}

TEST(Pages, AnElementOfAnotherKindIsNotReadAsEmpty)
{
    test::Library library;
    std::vector<protocol::FaceConfigForPer> faces;
    std::vector<protocol::FaceConfigForCard> older;
    test::Conversation talk;
    const std::string page = Page("b", true, {{R"({"faceConfigForCard":{"cardNo":"7","faceDataType":"model"}})"}});
    library.wire.otherwise = page;
    EXPECT_FALSE(SynchronousFaceComm::request(faces, talk.request, "D1", talk.guid, talk.finished, talk.error));
    EXPECT_TRUE(faces.empty());
    EXPECT_TRUE(SynchronousFaceComm::request(older, talk.request, "D1", talk.guid, talk.finished, talk.error));
    ASSERT_EQ(older.size(), 1u);
    EXPECT_EQ(older.front().faceDataType, "model");
}

} // namespace

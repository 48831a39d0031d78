// Credentials that a device takes or judges at the person's presence.

#include "nexwire/Personnel/Collection.h"

#include <gtest/gtest.h>

#include "Batch.h"

namespace {

using namespace nexwire;
using namespace protocol::personnelcommon;
using test::Page;

const std::string kDevice = "D1";
const std::string kFace =
    R"({"faceReturn":{"faceData":"cGlj","faceDataLen":3,"modelData":"bW9kZWw=","modelDataLen":5}})";

struct Collected {
    FaceReturn face;
    test::Conversation talk;

    bool Ask() { return RemoteFaceCollectCom::request(face, talk.finished, talk.guid, talk.request, kDevice); }
};

TEST(Collection, AsksUntilThePersonHasCome)
{
    test::Library library;
    Collected c;
    library.wire.AnswerWith(Page("batch", false, {}));
    ASSERT_TRUE(c.Ask());
    EXPECT_EQ(c.talk.guid, "batch");
    EXPECT_FALSE(c.talk.finished);
    EXPECT_EQ(c.face.faceData, "");

    c.talk.request.guid = c.talk.guid;
    library.wire.AnswerWith(Page("other", true, {{kFace}}));
    ASSERT_TRUE(c.Ask());
    EXPECT_NE(library.wire.Last().body.find("\"guid\":\t\"batch\""), std::string::npos);
    EXPECT_EQ(c.face.faceData, "cGlj");
    EXPECT_EQ(c.face.faceDataLen, 3);
    EXPECT_EQ(c.face.modelData, "bW9kZWw=");
    EXPECT_EQ(c.face.modelDataLen, 5);
    // Only an answer without data says how the conversation goes on.
    EXPECT_EQ(c.talk.guid, "batch");
    EXPECT_FALSE(c.talk.finished);
}

TEST(Collection, ADeviceThatGivesUpSaysSo)
{
    test::Library library;
    Collected c;
    library.wire.AnswerWith(Page("batch", true, {}));
    ASSERT_TRUE(c.Ask());
    EXPECT_TRUE(c.talk.finished);
}

TEST(Collection, OnlyTheFirstItemCounts)
{
    test::Library library;
    Collected c;
    library.wire.AnswerWith(Page("batch", true, {{kFace}, {"no JSON"}}));
    ASSERT_TRUE(c.Ask());
    EXPECT_EQ(c.face.faceData, "cGlj");
}

TEST(Collection, WhatTheDeviceCouldNotTakeIsTheLastError)
{
    test::Library library;
    Collected c;
    c.face.faceData = "before";
    library.wire.AnswerWith(Page("batch", true, {{kFace, 23, "eyes closed"}}));
    Keel::Error::SetLastError({1, 2, "an earlier one"});
    EXPECT_FALSE(c.Ask());
    const Keel::Error::ErrorCode error = Keel::Error::GetLastError();
    EXPECT_EQ(error.category, 0);
    EXPECT_EQ(error.number, 23);
    EXPECT_EQ(error.text, "eyes closed");
    EXPECT_EQ(c.face.faceData, "before");
    EXPECT_EQ(c.talk.guid, "before");
    EXPECT_FALSE(c.talk.finished);
}

TEST(Collection, AnItemThatIsNotTheCredentialChangesNothing)
{
    test::Library library;
    for (const char* const text : {"", "no JSON", "[]", R"({"faceData":"cGlj"})"}) {
        Collected c;
        c.face.faceData = "before";
        library.wire.AnswerWith(Page("batch", true, {{text}}));
        EXPECT_FALSE(c.Ask()) << text;
        EXPECT_EQ(c.face.faceData, "before") << text;
    }
}

TEST(FaceCheck, AddsOneEntryPerPicture)
{
    const auto judged = [](int id, const std::string& result) {
        return R"({"faceCheckResult":{"faceId":)" + std::to_string(id) + R"(,"checkResult":")" + result + "\"}}";
    };
    const struct {
        bool (*function)(std::map<int, std::string>&, bool&, std::string&, const protocol::BatchPassThroughReq&,
                         const std::string&);
        const char* path;
    } routes[] = {
        {FaceCheckCom::request, "/7730/v1/deviceManagement/devices/D1/batchPassThrough"},
        {InternalFaceCheckCom::request, "/7730/v1/internal/deviceManagement/devices/D1/batchPassThrough"},
    };
    for (const auto& route : routes) {
        test::Library library;
        test::Conversation talk;
        std::map<int, std::string> results = {{1, "noFace"}, {4, "earlier"}};
        const auto check = [&] { return route.function(results, talk.finished, talk.guid, talk.request, kDevice); };

        library.wire.AnswerWith(
            Page("batch", false, {{judged(1, "success")}, {judged(2, "gone"), 9}, {judged(3, "lowQuality")}}));
        ASSERT_TRUE(check());
        EXPECT_EQ(library.wire.Last().url, route.path);
        EXPECT_EQ(library.wire.Last().method, 2);
        EXPECT_EQ(results, (std::map<int, std::string>{{1, "success"}, {3, "lowQuality"}, {4, "earlier"}}));
        EXPECT_EQ(talk.guid, "batch");
        EXPECT_FALSE(talk.finished);

        // What stands before an unreadable item stays; how the conversation goes on is not touched.
        library.wire.AnswerWith(Page("next", true, {{judged(5, "success")}, {"no JSON"}, {judged(6, "success")}}));
        EXPECT_FALSE(check());
        EXPECT_EQ(results.count(5), 1u);
        EXPECT_EQ(results.count(6), 0u);
        EXPECT_EQ(talk.guid, "batch");
        EXPECT_FALSE(talk.finished);

        library.wire.Fail();
        EXPECT_FALSE(check());
        EXPECT_EQ(results.size(), 4u);
    }
}

} // namespace

#include <gtest/gtest.h>
#include <keel/Error.h>

#include "nexwire/AccessController/Wiegand.h"
#include "nexwire/AnswerMemory.h"
#include "nexwire/LibraryErrors.h"
#include "nexwire/ParseJSONUtil.h"
#include "support/StubExecutor.h"

namespace {

using namespace nexwire;

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20;
constexpr std::uint64_t kDefault = sizeof(void*) >= 8 ? 2048 * kMebibyte : 512 * kMebibyte;

/// About a mebibyte of zeros.
std::string Zeros()
{
    std::string text = "[0";
    for (std::size_t i = 0; i < kMebibyte / 2; ++i) {
        text += ",0";
    }
    return text + "]";
}

class AnswerMemory : public ::testing::Test {
protected:
    ~AnswerMemory() override { SetAnswerMemoryLimit(kDefault); }

    bool Read(const std::string& data)
    {
        Keel::Error::SetLastError({});
        library_.wire.AnswerWith(R"({"code":"0-0","data":)" + data + "}");
        return CGetWiegands::request(result_);
    }

    test::Library library_;
    protocol::WiegandQueryResultListData result_;
};

TEST_F(AnswerMemory, WhatSomebodyReadsIsCountedWhatNobodyReadsCostsNothing)
{
    const std::string wanted = R"({"wiegandQueryResultList":)" + Zeros() + "}";
    SetAnswerMemoryLimit(60 * kMebibyte);
    ASSERT_TRUE(Read(R"({"wiegandQueryResultList":[{"guid":"before"}]})"));
    EXPECT_FALSE(Read(wanted)) << "half a million structures";
    const Keel::Error::ErrorCode error = Keel::Error::GetLastError();
    EXPECT_EQ(error.category, kAnswerCategory);
    EXPECT_EQ(error.number, static_cast<int>(AnswerError::TooCostly));
    EXPECT_NE(error.text.find(std::to_string(60 * kMebibyte)), std::string::npos) << error.text;
    ASSERT_EQ(result_.wiegandQueryResultList.size(), 1u);
    EXPECT_EQ(result_.wiegandQueryResultList[0].guid, "before");
    EXPECT_FALSE(Read(R"({"wiegandQueryResultList":[01]})" + std::string(60 * kMebibyte, ' '))) << "the text alone";
    EXPECT_TRUE(Read(R"({"wiegandQueryResultList":[{"guid":"after"}]})")) << "each answer begins anew";

    // Unknown members, and members that hold something else than they should, at every level.
    SetAnswerMemoryLimit(5 * kMebibyte);
    for (const std::string& unread : {R"({"unknown":)" + Zeros() + "}", Zeros(),
                                      R"({"wiegandQueryResultList":[{"guid":)" + Zeros() + R"(},{"guid":"last"}]})",
                                      R"({"wiegandQueryResultList":{"guid":)" + Zeros() + "}}"}) {
        EXPECT_TRUE(Read(unread)) << unread.substr(0, 60);
    }
    SetAnswerMemoryLimit(kDefault);
    EXPECT_TRUE(Read(wanted));
    EXPECT_EQ(result_.wiegandQueryResultList.size(), kMebibyte / 2 + 1);
}

TEST_F(AnswerMemory, HoldsForWhatOnlyTheLenientParserReadsAndForTextsOfDevices)
{
    SetAnswerMemoryLimit(20 * kMebibyte);
    EXPECT_FALSE(Read(R"({"x":01,"wiegandQueryResultList":)" + Zeros() + "}"));
    EXPECT_EQ(Keel::Error::GetLastError().category, kAnswerCategory);
    protocol::WiegandModifyParam text;
    EXPECT_FALSE(protocol::TParseJSONStr(text, R"({"wiegandModifyParam":{"deviceGuidList":)" + Zeros() + "}}"));
    EXPECT_EQ(Keel::Error::GetLastError().category, kAnswerCategory);
    EXPECT_TRUE(text.deviceGuidList.empty());
}

TEST_F(AnswerMemory, WhatIsSkippedIsStillJudged)
{
    for (const char* text : {R"({"unknown":[1,}})", R"({"unknown":{"a" 1}})", R"({"unknown":[tru]})"}) {
        EXPECT_FALSE(Read(text)) << text;
    }
    ASSERT_TRUE(Read(R"({"unknown":[[{"guid":1},[]],{"a":[{}]}],"wiegandQueryResultList":[7,{"x":[[]],"guid":"g",
        "deviceGuidList":["d",[1,["e"]],{"f":2},"h"]},{"guid":"i"}],"more":{}})"));
    ASSERT_EQ(result_.wiegandQueryResultList.size(), 3u);
    EXPECT_EQ(result_.wiegandQueryResultList[1].guid, "g");
    EXPECT_EQ(result_.wiegandQueryResultList[1].deviceGuidList, (std::vector<std::string>{"d", "", "", "h"}));
    EXPECT_EQ(result_.wiegandQueryResultList[2].guid, "i");
}

} // namespace

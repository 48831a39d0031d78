#include <random>
#include <set>
#include <thread>

#include <gtest/gtest.h>

#include <keel/Encrypt.h>
#include <keel/GuidUtil.h>
#include <keel/StringUtil.h>

namespace {

using namespace Keel;

TEST(StringUtil, FormatsAnyLength)
{
    EXPECT_EQ(StringUtil::FormatString("%s", ""), "");
    EXPECT_EQ(StringUtil::FormatString("Failed. [error-%d-%d] %5.1f%%", -3, 7, 2.25), "Failed. [error--3-7]   2.2%");
    for (const std::size_t length : {510U, 511U, 512U, 513U, 3'000'000U}) {
        const std::string text(length, 'x');
        EXPECT_EQ(StringUtil::FormatString("%s", text.c_str()), text) << length;
    }
}

TEST(StringUtil, Splits)
{
    using Pieces = std::vector<std::string>;
    const struct {
        std::string text, separator;
        Pieces pieces;
    } rows[] = {
        {"a--b", "-", {"a", "", "b"}},  {"", ",", {""}},          {",", ",", {"", ""}},          {"abc", "", {"abc"}},
        {"a::b:c", "::", {"a", "b:c"}}, {"aaa", "aa", {"", "a"}}, {"x,y,", ",", {"x", "y", ""}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(StringUtil::SplitString(row.text, row.separator), row.pieces) << row.text;
    }
}

TEST(StringUtil, TrimsAndLowersAsciiOnly)
{
    EXPECT_EQ(StringUtil::StringTrim(" \t\r\n\v\fa b \n"), "a b");
    EXPECT_EQ(StringUtil::StringTrim(" \t "), "");
    EXPECT_EQ(StringUtil::StringTrim("\xC2\xA0x"), "\xC2\xA0x");
    EXPECT_EQ(StringUtil::LowerCase("AZaz09[@ÄÖ中文"), "azaz09[@ÄÖ中文");
}

TEST(StringUtil, ErasesControlsAndWhatIsNotUtf8)
{
    const struct {
        std::string text, clean;
    } rows[] = {
        {std::string("a\0b\x1F\x7F\tc", 7), "abc"},
        {"é中😀\xF4\x8F\xBF\xBF", "é中😀\xF4\x8F\xBF\xBF"},
        {"\xC0\xAF\xE0\x80\xAF\xF0\x80\x80\xAF", ""}, // Overlong.
        {"\xED\xA0\x80\xED\xBF\xBF", ""},             // Surrogates.
        {"\xF4\x90\x80\x80\xF5\xFE\xFF", ""},         // Beyond U+10FFFF.
        {"\xE4\xB8", ""},                             // Cut off at the end.
        {"\xE4\xB8x\xE4\xE4\xB8\xAD\x80y", "x中y"},   // Cut off by something valid, stray continuation.
        {"\xEE\x80\x80\xED\x9F\xBF", "\xEE\x80\x80\xED\x9F\xBF"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(StringUtil::StringEraseInvalidChar(row.text), row.clean) << row.text;
    }
}

TEST(StringUtil, TellsUtf8)
{
    for (const std::string text : {"", "a", "门", "\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF", "\xC2\x80"}) {
        EXPECT_TRUE(StringUtil::IsUtf8(text)) << text;
    }
    for (const std::string text : {"\xFF", "\xC3", "a\xE9\x97", "seven a\xFF", "eight aa\xFF", "\xC0\x80",
                                   "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80"}) {
        EXPECT_FALSE(StringUtil::IsUtf8(text)) << text;
    }
}

TEST(Encrypt, Base64)
{
    const struct {
        std::string bytes, text;
    } rows[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
        {"\xFB\xFF\xFE", "+//+"},
        {std::string(3, '\0'), "AAAA"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Encrypt::Base64Encode(row.bytes), row.text);
        std::string bytes = "before";
        EXPECT_TRUE(Encrypt::Base64Decode(row.text, bytes));
        EXPECT_EQ(bytes, row.bytes);
    }
    std::mt19937 random(1);
    for (std::size_t length = 0; length < 600; ++length) {
        std::string bytes(length, '\0');
        for (char& c : bytes) {
            c = static_cast<char>(random());
        }
        std::string back;
        ASSERT_TRUE(Encrypt::Base64Decode(Encrypt::Base64Encode(bytes), back));
        ASSERT_EQ(back, bytes);
    }
}

TEST(Encrypt, Base64DecodeRefusesTheRestAndLeavesTheResult)
{
    for (const char* const text : {"Z", "Zg", "Zg=", "Zg===", "=Zg=", "Z===", "Zm9v\n", "Zm 9", "Zg==Zg==", "Zm9-",
                                   "Zh==", "Zm9=", "====", "Zm9v=", "\xC3\xA9xx"}) {
        std::string bytes = "before";
        EXPECT_FALSE(Encrypt::Base64Decode(text, bytes)) << text;
        EXPECT_EQ(bytes, "before");
    }
}

TEST(GuidUtil, IdentifiersAreRandomAndUniqueAcrossThreads)
{
    std::vector<std::vector<std::string>> made(4);
    std::vector<std::thread> threads;
    for (std::vector<std::string>& guids : made) {
        threads.emplace_back([&guids] {
            for (int i = 0; i < 500; ++i) {
                guids.push_back(GuidUtil::CreateGuid());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::set<std::string> all;
    for (const std::vector<std::string>& guids : made) {
        for (const std::string& guid : guids) {
            ASSERT_EQ(guid.size(), 32U);
            ASSERT_EQ(guid.find_first_not_of("0123456789abcdef"), std::string::npos) << guid;
            ASSERT_EQ(guid[12], '4') << guid;
            all.insert(guid);
        }
    }
    EXPECT_EQ(all.size(), 2000U);
}

} // namespace

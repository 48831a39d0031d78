#include <gtest/gtest.h>

#include <keel/CodePage.h>

#include "ConvertText.h"

namespace {

using namespace Keel;
using details::CodeSet;
using details::kUtf8;

#ifdef _WIN32
constexpr CodeSet kGbk = 936;
constexpr CodeSet kLatin = 1252;
constexpr CodeSet kNone = 64999;
#else
constexpr CodeSet kGbk = "GBK";
constexpr CodeSet kLatin = "ISO-8859-1";
constexpr CodeSet kNone = "NO-SUCH-SET";
#endif

TEST(CodePage, ConvertsAndKeepsTheRestOfInvalidText)
{
    const std::string nul("a\0b", 3);
    const struct {
        CodeSet from, to;
        std::string text, converted;
    } rows[] = {
        {kUtf8, kGbk, "门禁1", "\xC3\xC5\xBD\xFB\x31"},
        {kGbk, kUtf8, "\xC3\xC5\xBD\xFB\x31", "门禁1"},
        {kUtf8, kGbk, "门😀禁", "\xC3\xC5?\xBD\xFB"}, // Not in the set: one mark per character.
        {kUtf8, kLatin, "é中é", "\xE9?\xE9"},
        {kUtf8, kLatin, "Āa∞", "?a?"},                       // Nothing that looks like it.
        {kUtf8, kGbk, "门\xFF\xFE禁", "\xC3\xC5??\xBD\xFB"}, // Not UTF-8: one mark per byte.
        {kUtf8, kGbk, "门\xE7\xA6", "\xC3\xC5??"},           // Cut off.
        {kGbk, kUtf8, "\xC3\xC5\xFF\xBD\xFB\xC3", "门?禁?"},
        {kUtf8, kGbk, nul, nul},
        {kUtf8, kGbk, "", ""},
#ifndef _WIN32
        {kUtf8, "ISO-2022-JP", "日x", "\x1B$BF|\x1B(Bx"}, // Shift states are closed.
        {kUtf8, "ISO-2022-JP", "日", "\x1B$BF|\x1B(B"},
        {kUtf8, "ISO-2022-JP", "日\xFF", "\x1B$BF|\x1B(B?"},
#endif
    };
    for (const auto& row : rows) {
        std::string converted = "before";
        ASSERT_TRUE(details::ConvertText(row.from, row.to, row.text, "?", converted)) << row.to;
        EXPECT_EQ(converted, row.converted) << row.from << " to " << row.to << ": " << row.text;
    }
    std::string converted;
    EXPECT_FALSE(details::ConvertText(kUtf8, kNone, "x", "?", converted));
}

TEST(CodePage, LongTextsCrossTheBuffer)
{
    std::string utf8;
    std::string gbk;
    for (int i = 0; i < 5000; ++i) {
        utf8 += i % 7 == 0 ? "x" : "门";
        gbk += i % 7 == 0 ? "x" : "\xC3\xC5";
        if (i % 100 == 0) {
            utf8 += '\xFF';
            gbk += '?';
        }
    }
    std::string converted;
    ASSERT_TRUE(details::ConvertText(kUtf8, kGbk, utf8, "?", converted));
    EXPECT_EQ(converted, gbk);
}

#ifndef _WIN32
TEST(CodePage, WithoutALocaleOrInUtf8TextsPassUnchanged)
{
    // The tests run in the C locale, and the environment names none but UTF-8 or C.
    const std::string text("门禁\xFF\0x", 9);
    EXPECT_EQ(UTF8ToLocal(text), text);
    EXPECT_EQ(LocalToUTF8(text), text);
}
#endif

} // namespace

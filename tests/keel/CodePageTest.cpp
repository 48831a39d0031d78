#include <gtest/gtest.h>

#include "keel/CodePage.h"

#ifndef _WIN32
#include "ConvertText.h"

namespace {

using namespace Keel;

TEST(CodePage, ConvertsAndKeepsTheRestOfInvalidText)
{
    const std::string nul("a\0b", 3);
    const struct {
        const char *from, *to;
        std::string text, converted;
    } rows[] = {
        {"UTF-8", "GBK", "门禁1", "\xC3\xC5\xBD\xFB\x31"},
        {"GBK", "UTF-8", "\xC3\xC5\xBD\xFB\x31", "门禁1"},
        {"UTF-8", "GBK", "门😀禁", "\xC3\xC5?\xBD\xFB"}, // Not in the set: one mark per character.
        {"UTF-8", "ISO-8859-1", "é中é", "\xE9?\xE9"},
        {"UTF-8", "GBK", "门\xFF\xFE禁", "\xC3\xC5??\xBD\xFB"}, // Not UTF-8: one mark per byte.
        {"UTF-8", "GBK", "门\xE7\xA6", "\xC3\xC5??"},           // Cut off.
        {"GBK", "UTF-8", "\xC3\xC5\xFF\xBD\xFB\xC3", "门?禁?"},
        {"UTF-8", "GBK", nul, nul},
        {"UTF-8", "GBK", "", ""},
        {"UTF-8", "ISO-2022-JP", "日x", "\x1B$BF|\x1B(Bx"}, // Shift states are closed.
        {"UTF-8", "ISO-2022-JP", "日", "\x1B$BF|\x1B(B"},
        {"UTF-8", "ISO-2022-JP", "日\xFF", "\x1B$BF|\x1B(B?"},
    };
    for (const auto& row : rows) {
        std::string converted = "before";
        ASSERT_TRUE(details::ConvertText(row.from, row.to, row.text, "?", converted)) << row.to;
        EXPECT_EQ(converted, row.converted) << row.from << " to " << row.to << ": " << row.text;
    }
    std::string converted;
    EXPECT_FALSE(details::ConvertText("UTF-8", "NO-SUCH-SET", "x", "?", converted));
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
    ASSERT_TRUE(details::ConvertText("UTF-8", "GBK", utf8, "?", converted));
    EXPECT_EQ(converted, gbk);
}

TEST(CodePage, WithoutALocaleOrInUtf8TextsPassUnchanged)
{
    // The tests run in the C locale, and the environment names none but UTF-8 or C.
    const std::string text("门禁\xFF\0x", 9);
    EXPECT_EQ(UTF8ToLocal(text), text);
    EXPECT_EQ(LocalToUTF8(text), text);
}

} // namespace
#endif

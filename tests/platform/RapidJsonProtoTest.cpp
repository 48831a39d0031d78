#include "velaproto/RapidJsonProto.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include <gmock/gmock.h>

namespace {

using proto::CRapidJsonProto;

CRapidJsonProto& Loaded(CRapidJsonProto& document, const std::string& text)
{
    EXPECT_TRUE(document.Load(text)) << text;
    return document;
}

TEST(RapidJsonProto, WritesInTheOrderOfSetting)
{
    CRapidJsonProto document;
    EXPECT_EQ(document.ToString(), "{}");
    EXPECT_TRUE(document.Set("zeta", "z"));
    EXPECT_TRUE(document.Set("/alpha", 7));
    EXPECT_TRUE(document.Set("windowInfo/rowNum", std::numeric_limits<std::int32_t>::min()));
    EXPECT_TRUE(document.Set("/windowInfo/total", std::numeric_limits<std::int64_t>::max()));
    EXPECT_TRUE(document.Set("/deviceList/" + std::to_string(0) + "/guid", std::string("G0")));
    EXPECT_TRUE(document.Set("/deviceList/" + std::to_string(1) + "/guid", std::string("G1")));
    EXPECT_TRUE(document.Set("/deviceList/0/on", true));
    EXPECT_TRUE(document.Set("/deviceList/-/guid", "G2"));
    EXPECT_TRUE(document.SetArray("/none"));
    EXPECT_TRUE(document.Set("/ratio", 0.5));
    EXPECT_TRUE(document.Set("/slash~1tilde~0", false));
    EXPECT_TRUE(document.Set("/text", std::string("a\0\"\xE7\xBD\x91", 6)));
    EXPECT_TRUE(document.Set("/zeta", "again"));
    EXPECT_EQ(document.ToString(), "{\"zeta\":\"again\",\"alpha\":7,"
                                   "\"windowInfo\":{\"rowNum\":-2147483648,\"total\":9223372036854775807},"
                                   "\"deviceList\":[{\"guid\":\"G0\",\"on\":true},{\"guid\":\"G1\"},{\"guid\":\"G2\"}],"
                                   "\"none\":[],\"ratio\":0.5,\"slash/tilde~\":false,"
                                   "\"text\":\"a\\u0000\\\"\xE7\xBD\x91\"}");
}

TEST(RapidJsonProto, ReadsOnlyWhatFits)
{
    CRapidJsonProto document;
    Loaded(document, R"( {"i":7,"big":2147483648,"huge":18446744073709551615,"whole":5.0,"exp":1e3,"frac":1.5,
        "far":1e300,"s":"text","nul":"a\u0000b","t":true,"f":false,"n":null,"o":{"":{"k":1}},"a":[10,[20]],"s7":"7",
        "twice":1,"twice":2} )");
    struct Expected {
        const char* path;
        const char* int32;
        const char* int64;
        const char* real;
        const char* text;
        const char* boolean;
    };
    // "-" stands for: nothing read, the output as it was.
    const Expected cases[] = {{"/i", "7", "7", "7", "-", "-"},
                              {"i", "7", "7", "7", "-", "-"},
                              {"/big", "-", "2147483648", "2147483648", "-", "-"},
                              {"/huge", "-", "-", "18446744073709551616", "-", "-"},
                              {"/whole", "5", "5", "5", "-", "-"},
                              {"/exp", "1000", "1000", "1000", "-", "-"},
                              {"/frac", "-", "-", "1.5", "-", "-"},
                              {"/s", "-", "-", "-", "text", "-"},
                              {"/s7", "-", "-", "-", "7", "-"},
                              {"/t", "-", "-", "-", "-", "true"},
                              {"/f", "-", "-", "-", "-", "false"},
                              {"/n", "-", "-", "-", "-", "-"},
                              {"/a", "-", "-", "-", "-", "-"},
                              {"", "-", "-", "-", "-", "-"},
                              {"/a/0", "10", "10", "10", "-", "-"},
                              {"/a/1/0", "20", "20", "20", "-", "-"},
                              {"/o//k", "1", "1", "1", "-", "-"},
                              {"/twice", "1", "1", "1", "-", "-"},
                              {"/a/2", "-", "-", "-", "-", "-"},
                              {"/a/-", "-", "-", "-", "-", "-"},
                              {"/a/-1", "-", "-", "-", "-", "-"},
                              {"/a/00", "-", "-", "-", "-", "-"},
                              {"/a/4294967295", "-", "-", "-", "-", "-"},
                              {"/a/99999999999999999999", "-", "-", "-", "-", "-"},
                              {"/a/x", "-", "-", "-", "-", "-"},
                              {"/i/0", "-", "-", "-", "-", "-"},
                              {"/s/0", "-", "-", "-", "-", "-"},
                              {"/n/x", "-", "-", "-", "-", "-"},
                              {"/bad~2", "-", "-", "-", "-", "-"},
                              {"/bad~", "-", "-", "-", "-", "-"},
                              {"#/i", "-", "-", "-", "-", "-"},
                              {"/missing/deep/0", "-", "-", "-", "-", "-"}};
    for (const Expected& one : cases) {
        SCOPED_TRACE(one.path);
        std::int32_t int32 = -99;
        const bool has32 = document.Get(one.path, int32);
        EXPECT_EQ(has32 ? std::to_string(int32) : "-", one.int32);
        EXPECT_TRUE(has32 || int32 == -99);
        std::int64_t int64 = -99;
        const bool has64 = document.Get(one.path, int64);
        EXPECT_EQ(has64 ? std::to_string(int64) : "-", one.int64);
        EXPECT_TRUE(has64 || int64 == -99);
        double real = -99;
        const std::string realText = document.Get(one.path, real) ? one.real : "-";
        EXPECT_EQ(realText, one.real);
        EXPECT_EQ(real, realText == "-" ? -99 : std::stod(one.real));
        for (const bool before : {false, true}) {
            bool boolean = before;
            const bool read = document.Get(one.path, boolean);
            EXPECT_EQ(read ? (boolean ? "true" : "false") : "-", std::string(one.boolean));
            EXPECT_TRUE(read || boolean == before);
        }
        std::string string = "before";
        EXPECT_EQ(document.Get(one.path, string), std::string(one.text) != "-");
        EXPECT_EQ(string, std::string(one.text) != "-" ? one.text : "before");
    }
    double far = 0;
    EXPECT_TRUE(document.Get("/far", far));
    EXPECT_EQ(far, 1e300);
    std::int64_t int64 = 0;
    EXPECT_FALSE(document.Get("/far", int64));
    std::string nul;
    EXPECT_TRUE(document.Get("/nul", nul));
    EXPECT_EQ(nul, std::string("a\0b", 3));

    EXPECT_TRUE(document.Has("/n"));
    EXPECT_TRUE(document.Has(""));
    EXPECT_TRUE(document.Has("/o/"));
    EXPECT_FALSE(document.Has("/x"));
    EXPECT_EQ(document.ArraySize("/a"), 2u);
    EXPECT_EQ(document.ArraySize("a/1"), 1u);
    EXPECT_EQ(document.ArraySize("/o"), 0u);
    EXPECT_EQ(document.ArraySize("/missing"), 0u);
    EXPECT_EQ(document.ArraySize(""), 0u);
}

TEST(RapidJsonProto, RefusedTextsLeaveTheDocumentAsItIs)
{
    CRapidJsonProto document;
    Loaded(document, "{\"kept\":1}");
    const std::string texts[] = {"",
                                 " ",
                                 "{",
                                 "{\"a\":1}<html>",
                                 "{\"a\":1}{}",
                                 std::string("{\"a\":1}\0", 8),
                                 std::string("{\"a\":1}\0x", 9),
                                 "{\"a\":1,}",
                                 "{'a':1}",
                                 "{\"a\":01}",
                                 "{\"a\":NaN}",
                                 "{\"a\":1e999}",
                                 "{\"a\":\"\x80\"}",
                                 "{\"a\":\"\xC0\x80\"}",
                                 "{\"a\":\"\xE7\xBD\"}",
                                 "{\"a\":\"\xED\xA0\x80\"}",
                                 "{\"\xFF\":1}",
                                 "{\"a\":\"\\ud800\"}",
                                 "{\"a\":\"\\udc00\"}",
                                 "{\"a\":\"\\ud800\\u0041\"}",
                                 "{\"a\":\"line\nbreak\"}",
                                 "{\"a\":/*c*/1}",
                                 std::string(1000000, '['),
                                 std::string(1001, '[') + std::string(1001, ']')};
    for (const std::string& text : texts) {
        EXPECT_FALSE(document.Load(text)) << text.substr(0, 40);
        EXPECT_EQ(document.ToString(), "{\"kept\":1}");
    }
    std::string objects;
    for (int i = 0; i < 100000; ++i) {
        objects += "{\"a\":";
    }
    EXPECT_FALSE(document.Load(objects));
}

TEST(RapidJsonProto, LoadsWhatJsonAllows)
{
    const std::string deep = std::string(1000, '[') + std::string(1000, ']');
    const std::pair<std::string, std::string> cases[] = {{"\xEF\xBB\xBF {\"a\" : [ ] }\r\n\t", "{\"a\":[]}"},
                                                         {"\"text\"", "\"text\""},
                                                         {"[1,2.50,-0]", "[1,2.5,0]"},
                                                         {"\"\\ud83d\\ude00\\/\"", "\"\xF0\x9F\x98\x80/\""},
                                                         {deep, deep}};
    for (const auto& one : cases) {
        CRapidJsonProto document;
        EXPECT_EQ(Loaded(document, one.first).ToString(), one.second);
    }
}

TEST(RapidJsonProto, SettersRefuseWithoutChangingAnything)
{
    const std::string before = "{\"n\":1,\"s\":\"x\",\"a\":[1],\"o\":{}}";
    CRapidJsonProto document;
    Loaded(document, before);
    std::string tooDeep;
    for (int i = 0; i < 1000; ++i) {
        tooDeep += "/a";
    }
    const std::string paths[] = {"",
                                 "/n/x",
                                 "/s/0",
                                 "/a/x",
                                 "/a/00",
                                 "/a/-1",
                                 "/a/4000000000",
                                 "/a/4294967295",
                                 "/a/99999999999999999999",
                                 "/a/1026",
                                 "/new/1025/x",
                                 "/new/0/1025",
                                 "/bad~2",
                                 "/new/\xFF",
                                 tooDeep};
    for (const std::string& path : paths) {
        SCOPED_TRACE(path.substr(0, 40));
        EXPECT_FALSE(document.Set(path, 1));
        EXPECT_FALSE(document.Set(path, "text"));
        EXPECT_FALSE(document.SetArray(path));
        EXPECT_EQ(document.ToString(), before);
    }
    EXPECT_FALSE(document.Set("/new", "\xFF"));
    EXPECT_FALSE(document.Set("/new", std::string("ok\xE7\xBD")));
    EXPECT_FALSE(document.Set("/new", static_cast<const char*>(nullptr)));
    EXPECT_FALSE(document.Set("/new", std::nan("")));
    EXPECT_FALSE(document.Set("/new", std::numeric_limits<double>::infinity()));
    EXPECT_EQ(document.ToString(), before);
}

TEST(RapidJsonProto, SettersFillGapsAndKeepContainers)
{
    CRapidJsonProto document;
    Loaded(document, "{\"a\":[1],\"o\":{\"x\":1},\"n\":null}");
    EXPECT_TRUE(document.Set("/a/2", 3));
    EXPECT_TRUE(document.Set("/a/1/k", "was null"));
    EXPECT_TRUE(document.Set("/o/0", "a key in an object"));
    EXPECT_TRUE(document.Set("/n/0", true));
    EXPECT_TRUE(document.Set("/o/x", 2.5));
    EXPECT_EQ(document.ToString(), "{\"a\":[1,{\"k\":\"was null\"},3],\"o\":{\"x\":2.5,\"0\":\"a key in an object\"},"
                                   "\"n\":[true]}");
    EXPECT_TRUE(document.Set("/gap/1024", 1));
    EXPECT_EQ(document.ArraySize("/gap"), 1025u);
}

// A list grown element by element must not cost the square of its length.
TEST(RapidJsonProto, BuildsLongLists)
{
    CRapidJsonProto document;
    const int count = 100000;
    for (int i = 0; i < count; ++i) {
        ASSERT_TRUE(document.Set("/list/" + std::to_string(i) + "/guid", i));
    }
    CRapidJsonProto copy;
    Loaded(copy, document.ToString());
    EXPECT_EQ(copy.ArraySize("/list"), static_cast<std::size_t>(count));
    std::int32_t last = 0;
    EXPECT_TRUE(copy.Get("/list/" + std::to_string(count - 1) + "/guid", last));
    EXPECT_EQ(last, count - 1);
}

} // namespace

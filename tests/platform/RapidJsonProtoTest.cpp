#include <velaproto/RapidJsonProto.h>

#include <cmath>
#include <cstdint>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

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

// What one kind of read gives as text, "-" when it refuses, which must leave the output alone.
template <class Value>
std::string Reading(const CRapidJsonProto& document, const std::string& path, const Value& before)
{
    Value value = before;
    if (!document.Get(path, value)) {
        EXPECT_EQ(value, before) << path;
        return "-";
    }
    std::ostringstream text;
    text << std::boolalpha << std::setprecision(20) << value;
    return text.str();
}

TEST(RapidJsonProto, ReadsOnlyWhatFits)
{
    CRapidJsonProto document;
    Loaded(document, R"( {"i":7,"big":2147483648,"huge":18446744073709551615,"whole":5.0,"exp":1e3,"frac":1.5,
        "far":1e300,"s":"text","nul":"a\u0000b","t":true,"f":false,"n":null,"o":{"":{"k":1}},"a":[10,[20]],"s7":"7",
        "twice":1,"twice":2} )");
    const std::string none = "- - - - -";
    // As 32 bits, 64 bits, a double, a text and a boolean.
    std::vector<std::pair<std::string, std::string>> cases = {
        {"/i", "7 7 7 - -"},
        {"i", "7 7 7 - -"},
        {"/big", "- 2147483648 2147483648 - -"},
        {"/huge", "- - 18446744073709551616 - -"},
        {"/whole", "5 5 5 - -"},
        {"/exp", "1000 1000 1000 - -"},
        {"/frac", "- - 1.5 - -"},
        {"/s", "- - - text -"},
        {"/nul", "- - - " + std::string("a\0b", 3) + " -"},
        {"/s7", "- - - 7 -"},
        {"/t", "- - - - true"},
        {"/f", "- - - - false"},
        {"/a/0", "10 10 10 - -"},
        {"/a/1/0", "20 20 20 - -"},
        {"/o//k", "1 1 1 - -"},
        {"/twice", "1 1 1 - -"},
    };
    for (const char* const path :
         {"/n", "/a", "", "/a/2", "/a/-", "/a/-1", "/a/00", "/a/4294967295", "/a/99999999999999999999", "/a/x", "/i/0",
          "/s/0", "/n/x", "/bad~2", "/bad~", "#/i", "/missing/deep/0"}) {
        cases.emplace_back(path, none);
    }
    for (const auto& [path, read] : cases) {
        for (const bool before : {false, true}) {
            EXPECT_EQ(Reading(document, path, std::int32_t{-99}) + ' ' + Reading(document, path, std::int64_t{-99}) +
                          ' ' + Reading(document, path, -99.0) + ' ' + Reading(document, path, std::string("before")) +
                          ' ' + Reading(document, path, before),
                      read)
                << path;
        }
    }
    EXPECT_EQ(Reading(document, "/far", 0.0), "1.0000000000000000525e+300");
    EXPECT_EQ(Reading(document, "/far", std::int64_t{-99}), "-");

    for (const char* const path : {"/n", "", "/o/"}) {
        EXPECT_TRUE(document.Has(path)) << path;
    }
    EXPECT_FALSE(document.Has("/x"));
    EXPECT_EQ(document.ArraySize("/a"), 2u);
    EXPECT_EQ(document.ArraySize("a/1"), 1u);
    for (const char* const path : {"/o", "/missing", ""}) {
        EXPECT_EQ(document.ArraySize(path), 0u) << path;
    }
}

TEST(RapidJsonProto, RefusedTextsLeaveTheDocumentAsItIs)
{
    CRapidJsonProto document;
    Loaded(document, "{\"kept\":1}");
    std::string objects;
    for (int i = 0; i < 100000; ++i) {
        objects += "{\"a\":";
    }
    std::vector<std::string> texts = {"",
                                      " ",
                                      "{",
                                      "{'a':1}",
                                      "{\"\xFF\":1}",
                                      objects,
                                      std::string(1000000, '['),
                                      std::string(1001, '[') + std::string(1001, ']')};
    for (const char* const value :
         {"1,", "01", "NaN", "1e999", "\"\x80\"", "\"\xC0\x80\"", "\"\xE7\xBD\"", "\"\xED\xA0\x80\"", "\"\\ud800\"",
          "\"\\udc00\"", "\"\\ud800\\u0041\"", "\"line\nbreak\"", "/*c*/1"}) {
        texts.push_back(std::string("{\"a\":") + value + "}");
    }
    for (const std::string& behind :
         {std::string("<html>"), std::string("{}"), std::string(1, '\0'), std::string("\0x", 2)}) {
        texts.push_back("{\"a\":1}" + behind);
    }
    for (const std::string& text : texts) {
        EXPECT_FALSE(document.Load(text)) << text.substr(0, 40);
        EXPECT_EQ(document.ToString(), "{\"kept\":1}");
    }
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
    for (const std::string& path : std::initializer_list<std::string>{
             "", "/n/x", "/s/0", "/a/x", "/a/00", "/a/-1", "/a/4000000000", "/a/4294967295", "/a/99999999999999999999",
             "/a/1026", "/new/1025/x", "/new/0/1025", "/bad~2", "/new/\xFF", tooDeep}) {
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

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "src/Description.h"

namespace {

using nexwire::simulator::Description;
using nexwire::simulator::ResourceFile;
using testing::HasSubstr;

std::string Failure(const std::string& text)
{
    try {
        const Description description({ResourceFile{"x.json", text}});
        return {};
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

std::string Resource(const std::string& members)
{
    return "{\"module\":\"accessController\",\"collections\":{\"c\":{\"key\":\"k\"}},\"resources\":[{\"path\":\"/a/"
           "{x}\","
           "\"verb\":\"PUT\"" +
           members + "}]}";
}

TEST(ResourceTest, MistakesAreNamedWithFileAndResource)
{
    EXPECT_EQ(Failure(Resource(",\"do\":\"reply\"")), "");
    const struct {
        std::string text;
        const char* says;
    } cases[] = {
        {"{\"module\":", "offset"},
        {Resource(",\"do\":\"invent\""), "unknown operation \"invent\""},
        {Resource(",\"do\":\"query\""), "missing \"collection\""},
        {Resource(",\"do\":\"query\",\"collection\":\"d\""), "unknown collection"},
        {Resource(",\"do\":\"reply\",\"anwser\":{}"), "unknown member \"anwser\""},
        {Resource(",\"do\":\"query\",\"collection\":\"c\",\"filter\":[{\"field\":\"f\"}]"), "has no test"},
        {Resource(",\"do\":\"modify\",\"collection\":\"c\",\"refuse\":[{\"has\":{},\"reason\":\"whim\"}]"), "reason"},
        {Resource(",\"do\":\"reply\"},{\"path\":\"/a/{y}\",\"verb\":\"PUT\",\"do\":\"reply\""), "another resource"},
        {Resource(",\"do\":\"reply\"},{\"path\":\"/b/{y:z}\",\"verb\":\"PUT\",\"do\":\"reply\""),
         "collection in the path"},
        {"{\"module\":\"elsewhere\",\"resources\":[{\"path\":\"/a\",\"verb\":\"PUT\",\"do\":\"reply\"}]}",
         "unknown module"},
        {"{\"module\":\"event\",\"collections\":{\"c\":{\"key\":\"k\",\"seed\":[{}]}}}", "missing \"k\""},
    };
    for (const auto& c : cases) {
        EXPECT_THAT(Failure(c.text), HasSubstr(c.says)) << c.text;
        EXPECT_THAT(Failure(c.text), HasSubstr("x.json")) << c.text;
    }
}

TEST(ResourceTest, LiteralSegmentsWinOverPlaceholders)
{
    const std::string text = "{\"module\":\"event\",\"resources\":["
                             "{\"path\":\"/a/{x}/c\",\"verb\":\"GET\",\"do\":\"reply\"},"
                             "{\"path\":\"/a/b\",\"verb\":\"GET\",\"do\":\"reply\"},"
                             "{\"path\":\"/a/{x}\",\"verb\":\"GET\",\"do\":\"reply\"},"
                             "{\"path\":\"/a/{x}\",\"verb\":\"PUT\",\"root\":\"r\",\"do\":\"reply\"},"
                             "{\"path\":\"/a/{x}\",\"verb\":\"PUT\",\"root\":\"s\",\"do\":\"reply\"}]}";
    const Description description({ResourceFile{"x.json", text}});
    const struct {
        const char* verb;
        const char* path;
        std::size_t found;
        const char* pattern;
        const char* placeholder;
        bool known;
    } cases[] = {
        {"GET", "/a/b", 1, "/a/b", "", true},
        {"GET", "/a/z", 1, "/a/{x}", "z", true},
        {"PUT", "/a/b", 2, "/a/{x}", "b", true},
        {"GET", "/a/b/c", 1, "/a/{x}/c", "b", true},
        {"GET", "/a/$$%20/c", 1, "/a/{x}/c", "$$%20", true},
        {"DELETE", "/a/b", 0, "", "", true},
        {"GET", "/a/", 0, "", "", false},
        {"GET", "/a//c", 0, "", "", false},
        {"GET", "/a", 0, "", "", false},
        {"GET", "a/b", 0, "", "", false},
        {"GET", "", 0, "", "", false},
        {"GET", "/a/b/c/", 0, "", "", false},
    };
    for (const auto& c : cases) {
        const auto route = description.Find(c.verb, c.path);
        ASSERT_EQ(route.resources.size(), c.found) << c.verb << c.path;
        EXPECT_EQ(route.pathKnown, c.known) << c.path;
        if (c.found > 0) {
            EXPECT_EQ(route.resources.front()->path, c.pattern);
            EXPECT_EQ(route.placeholders.count("x") != 0 ? route.placeholders.at("x") : "", c.placeholder);
        }
    }
}

} // namespace

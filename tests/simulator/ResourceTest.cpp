#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "src/Description.h"

namespace {

using nexwire::simulator::Description;
using nexwire::simulator::ResourceFile;
using testing::HasSubstr;

const std::string kDocument = R"json({
    "functions": [
        {"class": "A", "function": "add", "verb": "PUT", "path": "/a/{x}", "root": "r", "body": "S"},
        {"class": "A", "function": "add", "arguments": [{"name": "t", "structure": "T"}], "verb": "PUT", "path": "/a/{y}", "root": "s", "body": "T"},
        {"class": "A", "function": "deep", "verb": "GET", "path": "/a/{x}/c"},
        {"class": "A", "function": "plain", "verb": "GET", "path": "/a/b"},
        {"class": "A", "function": "get", "verb": "GET", "path": "/a/{x}"},
        {"class": "A", "function": "joined", "verb": "GET", "path": "/ab{x}/c"}
    ],
    "structures": {"S": {"root": "r", "members": [{"key": "k", "kind": "text"}]}, "T": {"root": "s", "members": []}}
})json";

std::string Failure(const std::string& text)
{
    try {
        const Description description(kDocument, {ResourceFile{"x.json", text}});
        return {};
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

std::string Entry(const std::string& members, const std::string& function = "A::plain")
{
    return R"({"module": "accessController", "collections": {"c": {"key": "k"}}, "functions": {")" + function +
           R"(": {)" + members + "}}}";
}

TEST(ResourceTest, MistakesAreNamedWithFileAndEntry)
{
    EXPECT_EQ(Failure(Entry(R"("do": "find", "collection": "c")")), "");
    EXPECT_EQ(Failure(Entry(R"("do": "add", "collection": "c")", "A::add(T)")), "");
    const struct {
        std::string text;
        const char* says;
    } cases[] = {
        {R"({"module":)", "offset"},
        {R"({"module": "elsewhere"})", "unknown module"},
        {R"({"modul": "event"})", "unknown member \"modul\""},
        {R"({"collections": {"c": {"key": "k", "seed": [{}]}}})", "missing \"k\""},
        {R"({"collections": {"c": {"key": "k", "add": "A::ad"}}})", "no function \"A::ad\""},
        {R"({"collections": {"c": {"key": "k", "get": "A::get", "recall": "A::get"}}, "functions": {"A::get": {"do": "x"}}})",
         "unknown role"},
        {R"({"jobs": {"j": {"begin": "A::get"}}})", "unknown member \"begin\""},
        {Entry(R"("do": "invent")"), "unknown role \"invent\""},
        {Entry(R"("do": "find")"), "missing \"collection\""},
        {Entry(R"("do": "find", "collection": "d")"), "unknown collection \"d\""},
        {Entry(R"("do": "reply", "anwser": {})"), "unknown member \"anwser\""},
        {Entry(R"("do": "reply")", "A::plan"), "no function \"A::plan\""},
        {Entry(R"("do": "reply", "result": "U")"), "unknown structure"},
        {Entry(R"("do": "reply", "references": {"k": "d"})"), "unknown collection"},
        {Entry(R"("do": "find", "collection": "c", "filter": {"f": {}})"), "has no test"},
        {Entry(R"("do": "find", "collection": "c", "join": {"f": "c.k"})"), "a join reads"},
        {Entry(R"("do": "modify", "collection": "c", "refuse": [{"has": {}, "reason": "whim"}])"), "reason"},
        {R"({"functions": {"A::get": {"do": "reply"}, "GET /a/{z}": {"do": "reply"}}})", "another entry"},
    };
    for (const auto& c : cases) {
        EXPECT_THAT(Failure(c.text), HasSubstr(c.says)) << c.text;
        EXPECT_THAT(Failure(c.text), HasSubstr("x.json")) << c.text;
    }
}

TEST(ResourceTest, LiteralSegmentsWinOverIdentifiers)
{
    const Description description(kDocument, {});
    const struct {
        const char* verb;
        const char* path;
        std::size_t found;
        const char* pattern;
        const char* identifier;
        bool known;
    } cases[] = {
        {"GET", "/a/b", 1, "/a/b", "", true},
        {"GET", "/a/z", 1, "/a/{x}", "z", true},
        {"PUT", "/a/b", 2, "/a/{x}", "b", true},
        {"GET", "/a/b/c", 1, "/a/{x}/c", "b", true},
        {"GET", "/a/$$%20/c", 1, "/a/{x}/c", "$$%20", true},
        {"GET", "/ab7/c", 1, "/ab{x}/c", "7", true},
        {"GET", "/ab/c", 0, "", "", false},
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
        ASSERT_EQ(route.endpoints.size(), c.found) << c.verb << c.path;
        EXPECT_EQ(route.pathKnown, c.known) << c.path;
        if (c.found > 0) {
            EXPECT_EQ(route.endpoints.front()->path, c.pattern);
            EXPECT_EQ(route.identifiers.empty() ? "" : route.identifiers.front(), c.identifier);
        }
    }
}

} // namespace

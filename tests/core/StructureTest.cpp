#include <climits>

#include <gtest/gtest.h>

#include "Sample.h"
#include "core/FieldTable.h"
#include "core/JsonTree.h"
#include "nexwire/ParseJSONUtil.h"
#include "support/LogCapture.h"

namespace sample {

NEXWIRE_INBOUND_FIELDS(Part, "part", F(id), F(number), F(tags))
NEXWIRE_INBOUND_FIELDS(All, "all", F(text), F(number), F(large), F(real), F(flag), F(part), F(texts), F(numbers),
                       K("Parts", parts))
NEXWIRE_NO_FIELDS(Empty, "empty")
NEXWIRE_RETURN_FIELDS(Result, F(name), F(parts))

} // namespace sample

namespace {

using nexwire::core::CoversAllMembers;
using nexwire::core::Field;
using nexwire::core::JsonTree;
using nexwire::core::RoundUp;

template <class T>
std::string Printed(const T& structure)
{
    const JsonTree tree(structure.ToJson());
    return nexwire::core::PrintFormatted(tree.get());
}

TEST(FieldTable, MissedRepeatedAndReorderedMembersAreRefused)
{
    const auto& table = sample::All::Table::kFields;
    std::vector<Field> fields(table.begin(), table.end());
    const auto covers = [&] { return CoversAllMembers<sample::All>(fields.data(), fields.size()); };
    ASSERT_TRUE(covers());
    int hiding = 0;
    for (std::size_t i = 0; i < table.count; ++i) {
        fields.assign(table.begin(), table.end());
        // Where numbers of 64 bits have a wider alignment, the room of a member may pass for what that takes.
        const std::size_t before = i == 0 ? fields[0].offset : fields[i - 1].offset + fields[i - 1].size;
        const bool hidden =
            i + 1 < fields.size() && RoundUp(before, fields[i + 1].align) == std::size_t{fields[i + 1].offset};
        hiding += hidden ? 1 : 0;
        fields.erase(fields.begin() + static_cast<std::ptrdiff_t>(i));
        EXPECT_EQ(covers(), hidden) << "without " << table.fields[i].key;
        fields.assign(table.begin(), table.end());
        fields.insert(fields.begin() + static_cast<std::ptrdiff_t>(i), table.fields[i]);
        EXPECT_FALSE(covers()) << "twice " << table.fields[i].key;
        if (i > 0) {
            fields.assign(table.begin(), table.end());
            std::swap(fields[i - 1], fields[i]);
            EXPECT_FALSE(covers()) << "swapped " << table.fields[i].key;
        }
    }
    EXPECT_LE(hiding, 1);
}

TEST(Structure, BodyIsOneIndentedObjectUnderTheRootNameInDeclarationOrder)
{
    sample::All all;
    all.text = "a\"\\/\n\xE9\x97\xA8";
    all.number = INT32_MIN;
    all.large = 9007199254740993;
    all.part.id = "p";
    all.texts = {"x", ""};
    all.numbers = {1, -2};
    all.parts.resize(1);
    EXPECT_EQ(protocol::SerializeRequest(all),
              "{\n\t\"all\":\t{\n"
              "\t\t\"text\":\t\"a\\\"\\\\/\\n\xE9\x97\xA8\",\n"
              "\t\t\"number\":\t-2147483648,\n"
              "\t\t\"large\":\t9007199254740993,\n"
              "\t\t\"real\":\t0.5,\n"
              "\t\t\"flag\":\ttrue,\n"
              "\t\t\"part\":\t{\n\t\t\t\"id\":\t\"p\",\n\t\t\t\"number\":\t0,\n\t\t\t\"tags\":\t[]\n\t\t},\n"
              "\t\t\"texts\":\t[\"x\", \"\"],\n"
              "\t\t\"numbers\":\t[1, -2],\n"
              "\t\t\"Parts\":\t[{\n\t\t\t\t\"id\":\t\"\",\n\t\t\t\t\"number\":\t0,\n\t\t\t\t\"tags\":\t[]\n\t\t\t}]\n"
              "\t}\n}");
    EXPECT_EQ(protocol::SerializeRequest(sample::Empty()), "{\n\t\"empty\":\t{\n\t}\n}");
}

TEST(Structure, ReadsWhatItWrote)
{
    sample::All all;
    all.text = "\xF0\x9F\x94\x91";
    all.number = INT32_MAX;
    all.large = -9007199254740991;
    all.real = -1.25e-3;
    all.flag = false;
    all.part.tags = {"t"};
    all.texts = {"1", "2"};
    all.numbers = {3};
    all.parts.resize(2);
    all.parts[1].id = "second";
    sample::All read;
    ASSERT_TRUE(protocol::TParseJSONStr(read, protocol::SerializeRequest(all)));
    EXPECT_EQ(Printed(read), Printed(all));
    EXPECT_EQ(read.PresentKeys().size(), 9u);
    EXPECT_TRUE(read.parts[1].IsPresent("tags"));
}

TEST(Structure, FilterModes)
{
    struct Case {
        std::int32_t mode;
        std::vector<std::string> keys;
        std::string printed;
    };
    const Case cases[] = {
        {0, {"id", "number", "tags"}, "{\n}"},
        {1, {}, "{\n}"},
        {1, {"number"}, "{\n\t\"number\":\t0\n}"},
        {0, {"id", "tags"}, "{\n\t\"number\":\t0\n}"},
        {1, {"Number"}, "{\n}"},
        {2, {"id"}, "{\n\t\"id\":\t\"\",\n\t\"number\":\t0,\n\t\"tags\":\t[]\n}"},
    };
    for (const Case& c : cases) {
        sample::Part part;
        part.SetFilter(c.mode, c.keys);
        EXPECT_EQ(Printed(part), c.printed);
    }
    EXPECT_FALSE(sample::Part().IsLeftOut(""));
}

TEST(Structure, EachStructureObeysItsOwnFilterAndKeepsItWhenCopiedOrMoved)
{
    sample::All all;
    all.parts.resize(2);
    all.parts[0].WriteOnly({"id"});
    all.WriteOnly({"Parts"});
    const std::string expected = "{\n\t\"Parts\":\t[{\n\t\t\t\"id\":\t\"\"\n\t\t}, {\n\t\t\t\"id\":\t\"\",\n"
                                 "\t\t\t\"number\":\t0,\n\t\t\t\"tags\":\t[]\n\t\t}]\n}";
    EXPECT_EQ(Printed(all), expected);
    sample::All copy;
    copy = all;
    EXPECT_EQ(Printed(copy), expected);
    sample::All moved;
    moved = std::move(copy);
    EXPECT_EQ(Printed(moved), expected);
    EXPECT_EQ(Printed(sample::All(std::move(moved))), expected);
}

TEST(Structure, MissingKeysKeepMistypedValuesFollowTheRulesListsAreCleared)
{
    const auto fresh = [] {
        sample::All all;
        all.texts = {"old"};
        all.numbers = {1};
        all.parts.resize(1);
        all.part.id = "old";
        return all;
    };
    sample::All all = fresh();
    ASSERT_TRUE(protocol::TParseJSONStrWithoutRoot(all, "{}"));
    EXPECT_EQ(all.text, "default");
    EXPECT_EQ(all.number, 7);
    EXPECT_TRUE(all.texts.empty() && all.numbers.empty() && all.parts.empty());
    EXPECT_TRUE(all.PresentKeys().empty());

    for (const char* wrong : {"null", "true", "1", "\"text\"", "[]", "{}", "1e999"}) {
        const std::string value = wrong;
        std::string json = "{";
        for (const char* key : {"text", "number", "large", "real", "flag", "part", "texts", "numbers", "Parts"}) {
            json += std::string(json.size() > 1 ? "," : "") + '"' + key + "\":" + value;
        }
        json += "}";
        all = fresh();
        ASSERT_TRUE(protocol::TParseJSONStrWithoutRoot(all, json)) << json;
        EXPECT_EQ(all.text, value == "\"text\"" ? "text" : "") << json;
        EXPECT_EQ(all.number, value == "1" ? 1 : value == "1e999" ? INT32_MAX : 7) << json;
        EXPECT_EQ(all.large, value == "1" ? 1 : value == "1e999" ? INT64_MAX : 8) << json;
        EXPECT_TRUE(all.flag) << json;
        EXPECT_EQ(all.part.id, "old") << json;
        EXPECT_TRUE(all.texts.empty() && all.numbers.empty() && all.parts.empty()) << json;
        EXPECT_EQ(all.PresentKeys().size(), 9u) << json;
    }
}

TEST(Structure, KeysMatchExactlyAndTheFirstOfTwoWinsInAnyOrder)
{
    sample::Part part;
    ASSERT_TRUE(protocol::TParseJSONStrWithoutRoot(
        part, R"({"number":3,"extra":{"id":"no"},"Id":"no","id":"first","ID":"no","number":4,"id":"last"})"));
    EXPECT_EQ(part.id, "first");
    EXPECT_EQ(part.number, 3);
    EXPECT_EQ(part.PresentKeys(), (std::unordered_set<std::string>{"id", "number"}));
}

TEST(Structure, ANulEndsATextAndAKeyThatIsRead)
{
    sample::All read;
    ASSERT_TRUE(protocol::TParseJSONStrWithoutRoot(
        read, R"({"text":"a\u0000b","texts":["\u0000","c\u0000"],"number\u0000s":5,"numb\u0000er":6})"));
    EXPECT_EQ(read.text, "a");
    EXPECT_EQ(read.texts, (std::vector<std::string>{"", "c"}));
    EXPECT_EQ(read.number, 5);
}

TEST(Structure, ElementsOfTheWrongTypeBecomeDefaults)
{
    sample::All all;
    ASSERT_TRUE(protocol::TParseJSONStrWithoutRoot(
        all, R"({"texts":["a",1,null],"numbers":[1,"2",3.9],"Parts":[{"id":"x"},5,[{"id":"no"}]]})"));
    EXPECT_EQ(all.texts, (std::vector<std::string>{"a", "", ""}));
    EXPECT_EQ(all.numbers, (std::vector<std::int32_t>{1, 0, 3}));
    ASSERT_EQ(all.parts.size(), 3u);
    EXPECT_EQ(all.parts[0].id, "x");
    EXPECT_EQ(all.parts[2].id, "");
}

TEST(Structure, ParsingANullNodeChangesNothing)
{
    sample::All all;
    all.texts = {"kept"};
    all.Parse(nullptr);
    EXPECT_EQ(all.texts.size(), 1u);
}

TEST(ParseHelpers, MalformedTextIsFalseLoggedAndLeavesTheStructureAlone)
{
    const test::LogCapture log;
    const std::string deep(2000, '[');
    const std::string bad[] = {"{",
                               "{\"part\":{}}x",
                               "{\"part\":{}} {}",
                               "nonsense",
                               deep,
                               "{\"part\":\"\\ud800\"}",
                               std::string("{\"part\":{}}\0", 12)};
    std::size_t expected = 0;
    for (const std::string& json : bad) {
        sample::Part part;
        part.id = "kept";
        part.tags = {"kept"};
        EXPECT_FALSE(protocol::TParseJSONStr(part, json)) << json;
        EXPECT_EQ(part.id + part.tags.at(0), "keptkept") << json;
        EXPECT_EQ(log.Count("Failed to cJSON_Parse( ["), ++expected) << json;
    }
    sample::Part part;
    EXPECT_FALSE(protocol::TParseJSONStr(part, ""));
    EXPECT_EQ(log.Count("Failed to cJSON_Parse"), expected);
    EXPECT_FALSE(protocol::TParseJSONStr(part, R"({"Part":{}})"));
    EXPECT_EQ(log.Count("Failed to cJSON_GetObjectItem([part])."), 1u);
    EXPECT_TRUE(protocol::TParseJSONStr(part, "\t{\"part\":{\"id\":\"i\"}} \r\n"));
    EXPECT_EQ(part.id, "i");
}

TEST(ParseHelpers, LogNamesThePlaceOfTheErrorAndOfTheCall)
{
    const test::LogCapture log;
    sample::Part part;
    EXPECT_FALSE(protocol::TParseJSONStrWithoutRoot(part, R"({"id": nope})"));
    EXPECT_EQ(log.Count(R"(Failed to cJSON_Parse( [{"id": nope}] ). Error info: [nope}].)"), 1u);
    EXPECT_EQ(log.Count("HTTPCommonJSONStruct.cpp"), 1u);
}

} // namespace

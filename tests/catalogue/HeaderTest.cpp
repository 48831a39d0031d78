#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/generator/Rows.h"

// What the build step reads of headers, and what it refuses.

namespace generator {
namespace {

using testing::HasSubstr;

Header Read(const std::string& include, const std::string& module, const std::string& text)
{
    Header header = ReadHeader("dir/" + include, text);
    header.include = include;
    header.module = module;
    return header;
}

Header Structures(const std::string& text)
{
    return Read("protocol/Part.h", "", "#pragma once\n\nnamespace protocol {\n" + text + "\n}\n");
}

Header Functions(const std::string& text)
{
    return Read("nexwire/Area/Part.h", "Area",
                "namespace nexwire {\nclass NEXWIRE_API C {\npublic:\n" + text + "\n};\n}\n");
}

std::string RowsOf(const Header& functions, const Header& structures = Structures(""))
{
    const Rows rows({structures, functions});
    std::ostringstream text;
    rows.Write(text, rows.Headers().back());
    return text.str();
}

TEST(Headers, GiveARowPerPublicStaticFunctionWithItsTypesInFull)
{
    const Header structures =
        Structures("namespace personnelcommon {\n/// One.\nstruct NEXWIRE_API Progress : IReturnData {\n"
                   "    std::int32_t done = 0; ///< 0 to 100 %.\n    NEXWIRE_JSON\n};\n}\n"
                   "struct NEXWIRE_API Progress : IReturnData { NEXWIRE_JSON };");
    const std::string rows = RowsOf(
        Functions(
            "    /// Follows.\n"
            "    static bool follow(std::shared_ptr<int> counter, protocol::personnelcommon::Progress& result,\n"
            "                       const std::vector<protocol::Progress>& all, const std::string id = \"\");\n"
            "    static std::string read(std::map<int, std::string>& texts, const void* bytes, std::size_t size);\n"
            "    static bool choose(int command, void* data, int size);\n"
            "private:\n    static bool hidden(long double);\n"),
        structures);
    EXPECT_THAT(rows, HasSubstr("bool (*)(std::shared_ptr<int>, protocol::personnelcommon::Progress&, "
                                "const std::vector<protocol::Progress>&, const std::string)"));
    EXPECT_THAT(rows, HasSubstr("{\"result\", nullptr, \"personnelcommon::Progress\", false, true}"));
    EXPECT_THAT(rows,
                HasSubstr("{\"all\", nullptr, \"Progress\", true, false, ListOf<std::vector<protocol::Progress>>()}"));
    EXPECT_THAT(rows, HasSubstr("{\"texts\", &PlainType<std::map<int, std::string>>, nullptr, false, true}"));
    EXPECT_THAT(rows, HasSubstr("Bytes<void>(a[1]), static_cast<std::size_t>(Slot<std::string>(a[1]).size())"));
    EXPECT_THAT(rows, HasSubstr("{\"data\", &PlainType<AnyStructure>, nullptr, false, true}"));
    EXPECT_THAT(rows, HasSubstr("static_cast<int>(Slot<AnyStructure>(a[1]).size())"));
    EXPECT_THAT(rows, Not(HasSubstr("hidden")));
    // What does not compile is found in the header.
    EXPECT_THAT(rows, HasSubstr("#line 5 \"dir/nexwire/Area/Part.h\""));
}

TEST(Headers, WhatCannotBeReadStopsWithFileAndLine)
{
    const struct {
        const char* text; ///< From line 4 on.
        const char* problem;
    } cases[] = {
        {"    static bool f(int);", ":4: the parameter 'int' has no name"},
        {"    static bool f(const std::string&);", ":4: the parameter 'const std::string&' has no name"},
        {"    static bool a(int b);\n\n    static bool f(const char* text);", ":6: a pointer needs its size behind it"},
        {"    static bool f(int** numbers);", ":4: 'int**' is no type"},
        {"    static int* f(int a);", ":4: a function that returns a pointer"},
        {"    static bool a(int b);\n    bool f(int a);", ":5: f is not static"},
        {"    static bool f(int a)", "a declaration without end"},
        {"    static bool f(const Plain& plain);\n};\nstruct Plain {\n    float wide = 0;",
         ":7: a member of a record cannot be"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.text);
        try {
            RowsOf(Functions(each.text));
            ADD_FAILURE() << "was read";
        } catch (const Unreadable& problem) {
            EXPECT_THAT(problem.what(), testing::StartsWith("dir/nexwire/Area/Part.h:"));
            EXPECT_THAT(problem.what(), HasSubstr(each.problem));
        }
    }
}

TEST(Headers, ExportWhatIsMarkedAndCompiled)
{
    const Rows rows({Structures("struct NEXWIRE_API Sent : IInboundData {\n    NEXWIRE_JSON\n};\n"
                                "struct NEXWIRE_API Plain {\n    int number = 0;\n};\nstruct Own { void f(); };\n"
                                "NEXWIRE_API bool Parse(const std::string& text);"),
                     Functions("    static bool f();")});
    std::ostringstream text;
    rows.WriteExports(text);
    EXPECT_EQ("namespace nexwire\nnamespace protocol\nnexwire::C\nprotocol::Parse\nprotocol::Sent\n", text.str());
}

Vocabulary Said(const std::string& comment)
{
    const Header header = Structures("struct S : IInboundData {\n    int a = 0; ///< " + comment + "\n};");
    return header.types.front().members.front().vocabulary;
}

TEST(Vocabulary, IsReadFromEveryForm)
{
    const Vocabulary texts = Said("Button at rest. One of: \"open\", \"shut\" as it was, mostly; empty: none.");
    ASSERT_EQ(2U, texts.values.size());
    EXPECT_TRUE(texts.closed && texts.empty && !texts.numbers);
    EXPECT_EQ("shut", texts.values[1].value);
    EXPECT_EQ("as it was, mostly", texts.values[1].means);

    const Vocabulary numbers = Said("One of: -1 any, 0 not sent.");
    EXPECT_TRUE(numbers.closed && numbers.numbers);
    EXPECT_EQ("-1", numbers.values[0].value);
    EXPECT_EQ("not sent", numbers.values[1].means);
    EXPECT_FALSE(Said("For example: \"a\", \"b\".").closed);

    const Vocabulary range = Said("How long. 1 to 255 s; 0: no limit. Read only.");
    EXPECT_TRUE(range.minimum.set && range.minimum.value == 1 && range.maximum.value == 255);
    EXPECT_EQ("s", range.unit);
    EXPECT_THAT(range.also, testing::ElementsAre(0));
    EXPECT_TRUE(range.readOnly);
    EXPECT_EQ("min", Said("Rest, 0 to 5 minutes.").unit);
    EXPECT_EQ("%", Said("Per cent, 0 to 100.").unit);
    EXPECT_TRUE(Said("Camera, from 1.").minimum.set);
    EXPECT_EQ(7, Said("1 Monday to 7 Sunday: 1 to 7.").maximum.value);

    const Vocabulary length = Said("4 to 8 digits, empty: none. Required.");
    EXPECT_TRUE(length.minLength.value == 4 && length.maxLength.value == 8 && length.empty && length.required);
    EXPECT_EQ(32, Said("Up to 32 characters.").maxLength.value);
    EXPECT_EQ(8, Said("Up to 8 elements.").maxItems.value);

    for (const char* prose :
         {"Milliseconds since 1970-01-01 UTC; 0 for ever.", "\"YYYY-MM-DD\", the last day included.",
          "1 (one in 10) to 9 (one in 10^9).", "Usually at most 8.", "Empty when there is none."}) {
        EXPECT_FALSE(Said(prose).Any()) << prose;
    }
}

TEST(Vocabulary, AMisspelledFormStopsWithFileAndLine)
{
    for (const char* comment : {"One of: .", "One of: \"a\", 1.", "9 to 1 s.", "One of: %."}) {
        try {
            Said(comment);
            ADD_FAILURE() << comment;
        } catch (const Unreadable& problem) {
            EXPECT_THAT(problem.what(), testing::StartsWith("dir/protocol/Part.h:5: S::a: ")) << comment;
        }
    }
}

} // namespace
} // namespace generator

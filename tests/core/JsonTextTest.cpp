#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <cjson/cJSON.h>
#include <gtest/gtest.h>

#include "core/JsonReader.h"
#include "core/JsonTree.h"

// The library reads and prints plain JSON by shorter ways than cJSON's. Whatever they do must be what cJSON does.

namespace {

using nexwire::core::Arena;
using nexwire::core::ConversionScope;
using nexwire::core::JsonTree;
using nexwire::core::ReadPlainJson;
using nexwire::core::TapeCursor;
using nexwire::core::TapeEntry;

bool SameText(const char* a, const char* b)
{
    return a == nullptr || b == nullptr ? a == b : std::strcmp(a, b) == 0;
}

bool SameNumber(double a, double b)
{
    return std::memcmp(&a, &b, sizeof(a)) == 0;
}

/// Node for node, links included.
bool SameTree(const cJSON* a, const cJSON* b)
{
    if (a->type != b->type || a->valueint != b->valueint || !SameNumber(a->valuedouble, b->valuedouble) ||
        !SameText(a->valuestring, b->valuestring) || !SameText(a->string, b->string)) {
        return false;
    }
    const cJSON* x = a->child;
    const cJSON* y = b->child;
    const cJSON* before = nullptr;
    for (; x != nullptr && y != nullptr; before = x, x = x->next, y = y->next) {
        if (!SameTree(x, y) || (before != nullptr && x->prev != before)) {
            return false;
        }
    }
    return x == y && (before == nullptr || a->child->prev == before);
}

/// What cJSON alone makes of a text: a tree, or null when it fails or something follows.
cJSON* ReadWithCjson(const std::string& text)
{
    const char* end = nullptr;
    JsonTree tree(cJSON_ParseWithLengthOpts(text.data(), text.size(), &end, 0));
    if (tree.get() == nullptr ||
        text.find_first_not_of(" \t\r\n", static_cast<std::size_t>(end - text.data())) != std::string::npos) {
        return nullptr;
    }
    return tree.Release();
}

void ExpectReadAsCjsonDoes(const std::string& text)
{
    const JsonTree expected(ReadWithCjson(text));
    ConversionScope scope;
    const char* position = nullptr;
    auto tape = scope.Parse(text, position);
    ASSERT_EQ(tape.has_value(), expected.get() != nullptr) << text;
    if (tape) {
        EXPECT_TRUE(SameTree(tape->Tree(tape->Next()), expected.get())) << text;
    } else {
        EXPECT_GE(position, text.data());
        EXPECT_LE(position, text.data() + text.size());
    }
}

std::string Nested(std::size_t levels)
{
    return std::string(levels, '[') + "1" + std::string(levels, ']');
}

const std::vector<std::string>& PlainTexts()
{
    static const std::vector<std::string> texts = {
        R"({"code":"0-0","msg":"","data":{"list":[{"a":1,"b":-2,"c":"x"},{"a":3,"b":[],"c":{}}],"n":null}})",
        " \t\r\n[ true , false , null , \"\" , { } , [ ] ] \n",
        R"(["\"\\\/\b\f\n\r\t","\u0041\u00e9\u4f60\ud83d\ude00 \\ud83d","a\u0000b",{"\u006bey":"\\\\u"}])",
        "\"王小明 \xED\x95\x9C \xFF\xC0 \xED\xB0\x80\"",
        "[0,-0,1,-1,2147483646,2147483647,2147483648,-2147483648,-2147483649,999999999999999,-999999999999999]",
        "[9007199254740993,9223372036854775808,123456789012345678901234567890,0.1,-0.0,1.5e3,1E5,1e+5,12e-5]",
        "[2.2250738585072011e-308,1.7976931348623157e308,0.30000000000000004,5e-320,100000000000000000000000]",
        R"({"a":1,"a":2,"A":3,"":4})",
        "true",
        "-12.5",
        Nested(999),
    };
    return texts;
}

TEST(JsonText, PlainJsonIsReadWithoutCjsonAsCjsonReadsIt)
{
    for (const std::string& text : PlainTexts()) {
        Arena arena;
        const TapeEntry* const read = ReadPlainJson(arena, text);
        const JsonTree expected(ReadWithCjson(text));
        ASSERT_NE(expected.get(), nullptr) << text;
        // Numbers out of the range of a double are the only plain ones left to cJSON.
        if (text.find("5e-320") == std::string::npos) {
            ASSERT_NE(read, nullptr) << text;
            TapeCursor tape(arena, read);
            EXPECT_TRUE(SameTree(tape.Tree(tape.Next()), expected.get())) << text;
        }
        ExpectReadAsCjsonDoes(text);
    }
}

TEST(JsonText, WhateverIsNotPlainIsLeftToCjson)
{
    const std::string digits(70, '7');
    const std::vector<std::string> texts = {
        "",
        " ",
        "{",
        "[1,]",
        "{\"a\":1,}",
        "[1 2]",
        "{\"a\" 1}",
        "{a:1}",
        "\"open",
        "\"\\x\"",
        "\"\\u12G4\"",
        "\"raw\x01control\"",
        "\xEF\xBB\xBF{\"bom\":1}",
        "[1e400,-1e400,1e-400]",
        "[01,1.,.5,+1,-]",
        "[nan]",
        "{\"code\":\"0-0\"}<html>",
        "1 2",
        std::string("[1]\0", 4),
        std::string("[1,\0 2]", 7),
        std::string("\"a\0b\"", 5),
        "[\v1\f]",
        "[" + digits + "]",
        "[0." + digits + "]",
        Nested(1000),
        Nested(1001),
        Nested(100000),
        R"(["\udc00"])",
        R"(["\ud800"])",
        R"(["\ud800\ud800"])",
        R"(["\ud83d\ude00\ude00"])",
        R"({"\udfff":1})",
        R"(["\\ud83d\ude00"])",
        R"(["\ud83dx\ude00"])",
        "\"\\",
        "\"\\u",
        "\"\\ud8",
        "[tru]",
        "nulL",
    };
    for (const std::string& text : texts) {
        ExpectReadAsCjsonDoes(text);
    }
    // Long texts are looked at in blocks.
    const std::string longText = "{\"text\":\"" + std::string(50, 't') + "\",\"next\":1}";
    for (const char c : {'\0', '\x1F', '"', '\x7F', '\xFF'}) {
        for (std::size_t at = 9; at < 59; ++at) {
            std::string text = longText;
            text[at] = c;
            ExpectReadAsCjsonDoes(text);
            Arena arena;
            const bool plain = static_cast<unsigned char>(c) >= 0x7F;
            EXPECT_EQ(ReadPlainJson(arena, text) != nullptr, plain) << text;
        }
    }
}

TEST(JsonText, DamagedTextsAreReadAsCjsonReadsThem)
{
    std::mt19937 random(20240301);
    const std::string alphabet = "{}[]\",:\\u0d8cDF9e.-+ \n\t\x01\x7F\xED/truefalsn";
    for (int round = 0; round < 20000; ++round) {
        std::string text = PlainTexts()[random() % (PlainTexts().size() - 1)];
        for (std::size_t change = 1 + random() % 3; change > 0 && !text.empty(); --change) {
            const std::size_t at = random() % text.size();
            const char c = alphabet[random() % alphabet.size()];
            switch (random() % 3) {
            case 0:
                text[at] = c;
                break;
            case 1:
                text.insert(at, 1, c);
                break;
            default:
                text.erase(at, 1 + random() % 3);
                break;
            }
        }
        ExpectReadAsCjsonDoes(text);
        if (HasFailure()) {
            return;
        }
    }
}

TEST(JsonText, TreesArePrintedAsCjsonPrintsThem)
{
    std::string everyByte;
    for (int c = 1; c < 256; ++c) {
        everyByte += static_cast<char>(c);
    }
    JsonTree root(cJSON_CreateObject());
    for (std::size_t start = 0; start < 10; ++start) {
        cJSON_AddStringToObject(root.get(), everyByte.c_str() + start * 7, everyByte.c_str() + start);
    }
    for (const double number : {0.0, -0.0, 1.0, -1.0, 2147483648.0, 999999999999999.0, 1e15, 1e15 - 1, -1e15, 1e16,
                                123456789012345678.0, 0.1, 1.0 / 3.0, 1e-7, 1e300, -2.5, std::nan(""), HUGE_VAL}) {
        cJSON_AddNumberToObject(root.get(), "number", number);
    }
    cJSON_AddRawToObject(root.get(), "raw", "9007199254740993");
    cJSON_AddNullToObject(root.get(), "null");
    cJSON_AddItemToObject(root.get(), "texts", cJSON_CreateStringReference("kept"));
    for (const std::string& text : PlainTexts()) {
        cJSON_AddItemToObject(root.get(), "text", cJSON_Parse(text.c_str()));
    }
    const std::unique_ptr<char, decltype(&cJSON_free)> printed(cJSON_Print(root.get()), &cJSON_free);
    ASSERT_NE(printed, nullptr);
    // Where cJSON leaves out digits that make a difference.
    std::string expected = printed.get();
    for (const auto& [brief, whole] :
         {std::pair("9.00719925474099e+15", "9007199254740992"), std::pair("0.3,", "0.30000000000000004,"),
          std::pair("1.79769313486232e+308", "1.7976931348623157e+308")}) {
        ASSERT_NE(expected.find(brief), std::string::npos) << brief;
        expected.replace(expected.find(brief), std::strlen(brief), whole);
    }
    EXPECT_EQ(nexwire::core::PrintFormatted(root.get()), expected);

    // What cJSON cannot print is not printed.
    cJSON_AddItemToObject(root.get(), "raw", cJSON_CreateRaw(nullptr));
    cJSON_GetArrayItem(root.get(), cJSON_GetArraySize(root.get()) - 1)->type = cJSON_Invalid;
    EXPECT_EQ(nexwire::core::PrintFormatted(root.get()), "");
    EXPECT_EQ(nexwire::core::PrintFormatted(nullptr), "");
}

TEST(JsonText, ARealNumberReadsBackAsItWas)
{
    for (const double value : {1.0 + DBL_EPSILON, std::nextafter(13.404954, 14.0), std::nextafter(-0.1, -1.0),
                               std::nextafter(1e15, 2e15), 5e-324, DBL_MAX, 52.520006599999998, 1.0 / 3.0}) {
        const JsonTree number(cJSON_CreateNumber(value));
        const std::string text = nexwire::core::PrintFormatted(number.get());
        EXPECT_EQ(std::strtod(text.c_str(), nullptr), value) << text;
    }
}

} // namespace

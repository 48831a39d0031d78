#include <algorithm>
#include <map>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/pointer.h>

#include "Process.h"
#include "catalogue/Comments.h"
#include "catalogue/Find.h"
#include "catalogue/Structures.h"

using testing::HasSubstr;
using testing::Not;

namespace test {
namespace {

/// Every "$ref" below a value.
void References(const rapidjson::Value& value, std::set<std::string>& all)
{
    if (value.IsObject()) {
        for (const auto& member : value.GetObject()) {
            if (std::string(member.name.GetString()) == "$ref") {
                all.insert(member.value.GetString());
            }
            References(member.value, all);
        }
    } else if (value.IsArray()) {
        for (const rapidjson::Value& element : value.GetArray()) {
            References(element, all);
        }
    }
}

std::set<std::string> Names(const std::string& path)
{
    std::set<std::string> names;
    for (std::size_t open = path.find('{'); open != std::string::npos; open = path.find('{', open + 1)) {
        names.insert(path.substr(open + 1, path.find('}', open) - open - 1));
    }
    return names;
}

class OpenApi : public testing::Test {
protected:
    void SetUp() override
    {
        const ProcessResult result = Nexwire({"openapi"});
        ASSERT_EQ(0, result.code) << result.err;
        ASSERT_FALSE(document.Parse(result.out.c_str()).HasParseError());
    }
    const rapidjson::Value& Operation(const char* path, const char* verb) { return document["paths"][path][verb]; }

    rapidjson::Document document;
};

TEST_F(OpenApi, HoldsEveryFunctionThatSendsOnceAndWhatItsPathsPromise)
{
    EXPECT_STREQ("3.1.0", document["openapi"].GetString());
    std::map<std::string, int> functions;
    std::set<std::string> ids;
    std::set<std::string> bare;
    for (const auto& path : document["paths"].GetObject()) {
        const std::string text = path.name.GetString();
        std::string without;
        for (std::size_t i = 0; i < text.size(); ++i) {
            without += text[i];
            if (text[i] == '{') {
                i = text.find('}', i) - 1;
            }
        }
        EXPECT_TRUE(bare.insert(without).second) << text << " is there twice under other names";
        std::set<std::string> declared;
        for (const auto& member : path.value.GetObject()) {
            const std::string name = member.name.GetString();
            if (name == "parameters") {
                for (const rapidjson::Value& parameter : member.value.GetArray()) {
                    declared.insert(parameter["name"].GetString());
                }
            } else if (name != "servers") {
                EXPECT_TRUE(ids.insert(member.value["operationId"].GetString()).second) << text;
                for (const rapidjson::Value& function : member.value["x-nexwire-functions"].GetArray()) {
                    ++functions[function.GetString()];
                }
            }
        }
        EXPECT_EQ(Names(text), declared) << text;
    }
    for (const nexwire::catalogue::Function& function : nexwire::catalogue::All()) {
        const std::string doc = nexwire::catalogue::DocOfFunction(function).text;
        const bool silent =
            doc.find("ends nothing") != std::string::npos || doc.find("lways false") != std::string::npos;
        EXPECT_EQ(silent ? 0 : 1, functions[nexwire::catalogue::UniqueName(function)]) << function.Signature();
    }
}

TEST_F(OpenApi, HasEveryStructureAndEveryReferenceResolves)
{
    const rapidjson::Value& schemas = document["components"]["schemas"];
    for (const nexwire::catalogue::StructureInfo& structure : nexwire::catalogue::Structures()) {
        std::string name = structure.name;
        for (std::size_t at = name.find("::"); at != std::string::npos; at = name.find("::")) {
            name.replace(at, 2, ".");
        }
        ASSERT_TRUE(schemas.HasMember(name.c_str())) << name;
    }
    std::set<std::string> references;
    References(document, references);
    for (const std::string& reference : references) {
        EXPECT_NE(nullptr, rapidjson::Pointer(reference.c_str()).Get(document)) << reference;
    }
    const rapidjson::Value& snap = schemas["SnapConfig"]["properties"];
    EXPECT_STREQ("integer", snap["snapTimes"]["type"].GetString());
    EXPECT_STREQ("array", snap["snapEventList"]["type"].GetString());
    EXPECT_STREQ("authPass", snap["snapEventList"]["items"]["enum"][0].GetString());
    const rapidjson::Value& door = schemas["AcsDoorParamCfg"]["properties"];
    EXPECT_EQ(1, door["openDuration"]["minimum"].GetInt());
    EXPECT_EQ(255, door["openDuration"]["maximum"].GetInt());
    EXPECT_STREQ("s", door["openDuration"]["x-nexwire-unit"].GetString());
    EXPECT_EQ(8, door["superPassword"]["anyOf"][0]["maxLength"].GetInt());
    EXPECT_STREQ("", door["superPassword"]["anyOf"][1]["enum"][0].GetString());
    EXPECT_STREQ("snapConfig", schemas["SnapConfig"]["x-nexwire-root-name"].GetString());
}

TEST_F(OpenApi, FunctionsThatShareAPathAndAVerbAreExamplesOfOneOperation)
{
    const rapidjson::Value& relay = Operation("/7730/v1/deviceManagement/devices/{deviceGuid}/dagPassThrough", "post");
    const rapidjson::Value& media = relay["requestBody"]["content"]["application/json"];
    EXPECT_TRUE(media["schema"]["properties"].HasMember("dagPassThroughReq"));
    const rapidjson::Value& snap = media["examples"]["cfginterface.setConfigRequest.SnapConfig"];
    EXPECT_EQ(4250, snap["value"]["dagPassThroughReq"]["command"].GetInt());
    EXPECT_THAT(relay["description"].GetString(),
                HasSubstr("| 4250 |  | `cfginterface::setConfigRequest(SnapConfig)` | SnapConfig |"));

    const rapidjson::Value& change = Operation("/7730/v1/accessController/accessGroups/{groupGuid}", "put");
    EXPECT_EQ(5U, change["x-nexwire-functions"].Size());
    EXPECT_EQ(5U, change["requestBody"]["content"]["application/json"]["examples"].MemberCount());
    EXPECT_EQ(1, change["x-nexwire-method-code"].GetInt());
    EXPECT_STREQ("PUT", document["x-nexwire-verbs"]["1"].GetString());
}

TEST_F(OpenApi, AnswersHaveTheShapeThatTheirFunctionsRead)
{
    const auto answer = [&](const char* path, const char* verb, const char* below) {
        const std::string pointer =
            std::string("/responses/200/content/application~1json/schema/allOf/1/properties/data") + below;
        const rapidjson::Value* const found = rapidjson::Pointer(pointer.c_str()).Get(Operation(path, verb));
        return found == nullptr ? std::string() : std::string(found->GetString());
    };
    // A structure that no argument shows, a record, a list of them, bytes.
    EXPECT_EQ("#/components/schemas/AccessGroupModifyResultData",
              answer("/7730/v1/accessController/accessGroups", "put", "/$ref"));
    EXPECT_EQ("integer", answer("/videoWall/v1/wall/startPlay", "post", "/properties/windowId/type"));
    EXPECT_EQ("string", answer("/videoWall/v1/wall/polling/task/get", "post",
                               "/properties/TaskList/items/properties/cameraList/items/properties/cameraGuid/type"));
    const rapidjson::Value& picture = Operation("/7730/v1/alarmCenter/images", "get")["responses"]["200"]["content"];
    EXPECT_TRUE(picture.HasMember("application/octet-stream"));
    // What a function cannot do without.
    EXPECT_EQ(22U, document["components"]["schemas"]["StatisticsCalc"]["required"].Size());
    EXPECT_NE(nullptr, rapidjson::Pointer("/responses/200/content/application~1json/schema/allOf/1/required")
                           .Get(Operation("/7730/v1/attendance/statistics/calculation", "post")));
    // No schema is told for nobody.
    std::set<std::string> references;
    References(document, references);
    for (const auto& schema : document["components"]["schemas"].GetObject()) {
        EXPECT_EQ(1U, references.count(std::string("#/components/schemas/") + schema.name.GetString()))
            << schema.name.GetString();
    }
}

/// Where a value does not keep to a schema; empty when it does. Knows what the document uses.
std::string Misfit(const rapidjson::Document& document, const rapidjson::Value& value, const rapidjson::Value& schema,
                   const std::string& at)
{
    const auto member = [&](const char* key) {
        const auto found = schema.FindMember(key);
        return found == schema.MemberEnd() ? nullptr : &found->value;
    };
    if (const rapidjson::Value* const reference = member("$ref")) {
        return Misfit(document, value, *rapidjson::Pointer(reference->GetString()).Get(document), at);
    }
    if (const rapidjson::Value* const any = member("anyOf")) {
        std::string why;
        for (const rapidjson::Value& each : any->GetArray()) {
            why = Misfit(document, value, each, at);
            if (why.empty()) {
                break;
            }
        }
        if (!why.empty()) {
            return why;
        }
    }
    if (const rapidjson::Value* const type = member("type")) {
        const std::string name = type->GetString();
        const bool good = name == "object"    ? value.IsObject()
                          : name == "array"   ? value.IsArray()
                          : name == "string"  ? value.IsString()
                          : name == "boolean" ? value.IsBool()
                          : name == "integer" ? value.IsInt64()
                                              : value.IsNumber();
        if (!good) {
            return at + " is no " + name;
        }
    }
    if (const rapidjson::Value* const values = member("enum")) {
        if (std::find(values->Begin(), values->End(), value) == values->End()) {
            return at + " is none of the values";
        }
    }
    const std::pair<const char*, const char*> bounds[] = {
        {"minimum", "maximum"}, {"minLength", "maxLength"}, {"minItems", "maxItems"}};
    const double sizes[] = {value.IsNumber() ? value.GetDouble() : 0.0,
                            value.IsString() ? static_cast<double>(value.GetStringLength()) : 0.0,
                            value.IsArray() ? static_cast<double>(value.Size()) : 0.0};
    for (std::size_t i = 0; i < 3; ++i) {
        const rapidjson::Value* const low = member(bounds[i].first);
        const rapidjson::Value* const high = member(bounds[i].second);
        if ((low != nullptr && sizes[i] < low->GetDouble()) || (high != nullptr && sizes[i] > high->GetDouble())) {
            return at + " is out of bounds";
        }
    }
    std::string why;
    if (const rapidjson::Value* const items = value.IsArray() ? member("items") : nullptr) {
        for (const rapidjson::Value& element : value.GetArray()) {
            why = why.empty() ? Misfit(document, element, *items, at + "[]") : why;
        }
    }
    if (const rapidjson::Value* const properties = value.IsObject() ? member("properties") : nullptr) {
        for (const auto& each : value.GetObject()) {
            const auto known = properties->FindMember(each.name);
            why = why.empty() && known != properties->MemberEnd()
                      ? Misfit(document, each.value, known->value, at + "." + each.name.GetString())
                      : why;
        }
    }
    return why;
}

TEST_F(OpenApi, ExamplesKeepToTheirSchemas)
{
    int examples = 0;
    for (const auto& path : document["paths"].GetObject()) {
        for (const auto& verb : path.value.GetObject()) {
            const rapidjson::Value* const content =
                verb.value.IsObject() ? rapidjson::Pointer("/requestBody/content").Get(verb.value) : nullptr;
            if (content == nullptr) {
                continue;
            }
            for (const auto& media : content->GetObject()) {
                if (!media.value.HasMember("examples")) {
                    continue;
                }
                for (const auto& example : media.value["examples"].GetObject()) {
                    ++examples;
                    EXPECT_EQ("", Misfit(document, example.value["value"], media.value["schema"], ""))
                        << example.name.GetString();
                }
            }
        }
    }
    EXPECT_GT(examples, 100);
}

TEST(ReferencePage, HoldsItsDataAndNeedsNothingElse)
{
    const Folder folder;
    ASSERT_EQ(0, Nexwire({"reference", "--html", folder.Path("page.html")}).code);
    const std::string page = folder.Read("page.html");
    const std::string open = "id=\"data\">";
    const std::size_t start = page.find(open) + open.size();
    rapidjson::Document data;
    ASSERT_FALSE(data.Parse(page.substr(start, page.find("</script>", start) - start).c_str()).HasParseError());
    EXPECT_EQ(nexwire::catalogue::All().size(), data["functions"].Size());
    for (const nexwire::catalogue::StructureInfo& structure : nexwire::catalogue::Structures()) {
        EXPECT_TRUE(data["structures"].HasMember(structure.name.c_str())) << structure.name;
    }
    // Without scripts the functions stand there all the same.
    EXPECT_THAT(page.substr(0, start),
                HasSubstr("#include &lt;nexwire/AccessController/AccessGroup.h&gt;\nbool CAccessGroupComm::"));
    for (const rapidjson::Value& function : data["functions"].GetArray()) {
        if (function["name"] == "CAccessGroupComm::addAccessGroup") {
            EXPECT_THAT(function["example"].GetString(), testing::StartsWith("protocol::AccessGroupAddParam "));
            EXPECT_THAT(function["example"].GetString(), HasSubstr("if (nexwire::CAccessGroupComm::addAccessGroup("));
        }
    }
    for (const char* elsewhere : {"http://", "https://", "src=", "@import", "url("}) {
        EXPECT_THAT(page.substr(0, start), Not(HasSubstr(elsewhere)));
    }
}

} // namespace
} // namespace test

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/Comments.h"
#include "catalogue/Find.h"
#include "catalogue/Structures.h"

namespace nexwire::catalogue {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;
using testing::StartsWith;

FunctionDoc DocOf(const char* name)
{
    return DocOfFunction(*Find(name).front());
}

bool StartsWithVector(const std::string& type)
{
    return type.compare(0, 12, "std::vector<") == 0;
}

/// Arguments that a declaration lists; commas inside a type separate none, and a pointer's size belongs to the pointer.
std::size_t CountArguments(const std::string& declaration)
{
    std::vector<std::string> arguments(1);
    int depth = 0;
    for (const char c : declaration.substr(declaration.find('(') + 1)) {
        depth += c == '<' ? 1 : c == '>' ? -1 : 0;
        if (depth == 0 && c == ',') {
            const bool withSize = arguments.back().find('*') != std::string::npos;
            arguments.emplace_back(withSize ? "*" : "");
        } else {
            arguments.back() += c;
        }
    }
    const auto isSize = [](const std::string& argument) {
        return argument.rfind("* int ", 0) == 0 || argument.rfind("* std::size_t ", 0) == 0;
    };
    const auto sizes = std::count_if(arguments.begin(), arguments.end(), isSize);
    return arguments.front() == ")" ? 0 : arguments.size() - static_cast<std::size_t>(sizes);
}

// What the generator misses would be missing in every page, silently.
TEST(Comments, EveryFunctionHasItsDeclarationAndItselfOrItsClassAComment)
{
    for (const Function& function : All()) {
        const FunctionDoc doc = DocOfFunction(function);
        EXPECT_THAT(doc.declaration, HasSubstr(" " + function.Name() + "(")) << function.Signature();
        EXPECT_EQ(function.Arguments().size(), CountArguments(doc.declaration)) << doc.declaration;
        EXPECT_NE("", DocOfClass(function.ClassName()) + doc.text) << function.Name();
    }
}

// Comments find their members by place.
TEST(Comments, EveryMemberOnTheWireIsFoundInItsHeader)
{
    for (const StructureInfo& structure : Structures()) {
        const std::vector<MemberDoc> declared = MembersOf(structure.name);
        ASSERT_EQ(structure.fields->count, declared.size()) << structure.name;
        for (std::size_t i = 0; i < declared.size(); ++i) {
            const core::Field& field = structure.fields->fields[i];
            const bool list = field.kind == core::Kind::StructList || field.kind == core::Kind::TextList ||
                              field.kind == core::Kind::IntList;
            EXPECT_EQ(list, StartsWithVector(declared[i].type)) << structure.name << " " << field.key;
            if (field.ops != nullptr) {
                EXPECT_THAT(declared[i].type, HasSubstr(field.ops->fields->name)) << structure.name << " " << field.key;
            }
        }
    }
}

TEST(Comments, AreReadAsTheyAreMeant)
{
    EXPECT_THAT(DocOfStruct("PersonnelAdd"), StartsWith("A person to put into a group."));
    EXPECT_EQ("", DocOfStruct("NoSuchStructure"));
    EXPECT_EQ("Camera, from 1.", DocOfMember("SnapConfig", "snapChannelNo"));
    EXPECT_EQ("", DocOfMember("SnapConfig", "enable"));

    // Parameters stand apart.
    const FunctionDoc download = DocOf("downloadAccessGroups");
    EXPECT_THAT(download.text, StartsWith("Orders the download of groups;"));
    EXPECT_THAT(download.parameters, ElementsAre(Pair("deleteGroup", "remove the groups from the devices instead."),
                                                 Pair("downloadMode", "server vocabulary, carried as it is.")));
    EXPECT_THAT(DocOf("CEncryptionComm").returns, HasSubstr("`result` is untouched otherwise."));
    EXPECT_THAT(DocOf("getAcsDoorParamRequest").parameters, ElementsAre(Pair("doorNo", "from 1.")));

    // One comment for a getter and its setter, none for a deletion below an addition.
    EXPECT_EQ(DocOf("getNFCConfigRequest").text, DocOf("setNFCConfigRequest").text);
    EXPECT_THAT(DocOf("deletePollingTask").text, StartsWith("Polling tasks:"));

    // Overloads have their own.
    EXPECT_THAT(DocOf("getConfigRequest(SnapConfig)").text, StartsWith("Pictures at events"));
    EXPECT_THAT(DocOf("getConfigRequest(RS485Parameters)").text, StartsWith("RS-485"));
    EXPECT_THAT(DocOf("getConfigRequest(RS485Parameters)").declaration, HasSubstr("protocol::RS485Parameters&"));

    EXPECT_THAT(RemarkOfClass("AcsParamConfig"), StartsWith("Configurations, abilities, states"));
}

} // namespace
} // namespace nexwire::catalogue

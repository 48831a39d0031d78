// generate VARIANT COUNT MEMBERS FOLDER: writes a synthetic set of structures, declared in one of several ways, with
// one reading and one writing function each, as a library of that many structures has.

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kPerModule = 20;

struct Member {
    std::string type;
    std::string name;
    char kind; ///< t text, i int, b bool, l list of texts, s structure, v list of structures.
};

std::string Name(std::size_t index)
{
    return "Record" + std::to_string(index);
}

/// Mostly texts, some numbers and flags, a list; one structure in five holds another one or a list of them.
std::vector<Member> Members(std::size_t index, std::size_t count)
{
    static const std::map<char, std::string> types = {
        {'t', "std::string"}, {'i', "std::int32_t"}, {'b', "bool"}, {'l', "std::vector<std::string>"}};
    const std::string pattern = "ttibtitlitbt";
    static const char* const words[] = {"deviceGuid", "deviceName", "channelNo",   "enabled",
                                        "beginTime",  "direction",  "remark",      "guidList",
                                        "priority",   "updatedBy",  "isTemporary", "tail"};
    std::vector<Member> members;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string name = words[i % 12] + std::to_string(index % 10 + i / 12 * 10);
        const bool holds = i + 1 == count && index > 0;
        if (holds && index % 10 == 5) {
            members.push_back({"std::vector<" + Name(index - 1) + ">", name + "List", 'v'});
        } else if (holds && index % 10 == 8) {
            members.push_back({Name(index - 1), name + "Info", 's'});
        } else {
            const char kind = pattern[i % 12];
            members.push_back({types.at(kind), name, kind});
        }
    }
    return members;
}

std::string Initial(const Member& member)
{
    return member.kind == 'i' ? " = 0" : member.kind == 'b' ? " = false" : "";
}

std::string List(const std::vector<Member>& members)
{
    std::string list;
    for (const Member& member : members) {
        list += ", F(" + member.name + ")";
    }
    return list;
}

std::string Filled(std::string text, const std::string& name, const std::string& list)
{
    std::string out;
    for (const char c : text) {
        if (c == '@') {
            out += name;
        } else if (c == '#') {
            out += list;
        } else {
            out += c;
        }
    }
    return out;
}

/// What somebody without a table writes for each member.
std::string Expanded(const std::string& name, const std::vector<Member>& members)
{
    std::ostringstream out;
    out << "void set::" << name
        << "::Parse(const cJSON* object)\n{\n    if (object == nullptr) {\n        return;\n    }\n"
        << "    present = 0;\n";
    for (const Member& m : members) {
        if (m.kind == 'l' || m.kind == 'v') {
            out << "    " << m.name << ".clear();\n";
        }
    }
    std::size_t bit = 0;
    for (const Member& m : members) {
        out << "    if (const cJSON* node = cJSON_GetObjectItemCaseSensitive(object, \"" << m.name << "\")) {\n"
            << "        present |= std::uint64_t{1} << " << bit++ << ";\n";
        switch (m.kind) {
        case 't':
            out << "        if (cJSON_IsString(node) != 0) {\n            " << m.name
                << " = node->valuestring;\n        } else {\n            " << m.name << ".clear();\n        }\n";
            break;
        case 'i':
            out << "        if (cJSON_IsNumber(node) != 0) {\n            " << m.name
                << " = node->valueint;\n        }\n";
            break;
        case 'b':
            out << "        if (cJSON_IsBool(node) != 0) {\n            " << m.name
                << " = cJSON_IsTrue(node) != 0;\n        }\n";
            break;
        case 's':
            out << "        if (cJSON_IsObject(node) != 0) {\n            " << m.name << ".Parse(node);\n        }\n";
            break;
        case 'l':
            out << "        if (cJSON_IsArray(node) != 0) {\n            const cJSON* element = nullptr;\n"
                << "            cJSON_ArrayForEach(element, node) {\n                " << m.name
                << ".emplace_back(cJSON_IsString(element) != 0 ? element->valuestring : \"\");\n            }\n"
                << "        }\n";
            break;
        default:
            out << "        if (cJSON_IsArray(node) != 0) {\n            const cJSON* element = nullptr;\n"
                << "            cJSON_ArrayForEach(element, node) {\n                " << m.name
                << ".emplace_back().Parse(element);\n            }\n        }\n";
            break;
        }
        out << "    }\n";
    }
    out << "}\n\ncJSON* set::" << name << "::ToJson() const\n{\n    Tree object(cJSON_CreateObject());\n";
    for (const Member& m : members) {
        out << "    if (!IsLeftOut(\"" << m.name << "\")) {\n";
        switch (m.kind) {
        case 't':
            out << "        if (!Add(object, \"" << m.name << "\", cJSON_CreateString(" << m.name << ".c_str()))) {\n";
            break;
        case 'i':
            out << "        if (!Add(object, \"" << m.name << "\", cJSON_CreateNumber(" << m.name << "))) {\n";
            break;
        case 'b':
            out << "        if (!Add(object, \"" << m.name << "\", cJSON_CreateBool(" << m.name << " ? 1 : 0))) {\n";
            break;
        case 's':
            out << "        if (!Add(object, \"" << m.name << "\", " << m.name << ".ToJson())) {\n";
            break;
        default:
            out << "        Tree list(cJSON_CreateArray());\n        for (const auto& element : " << m.name << ") {\n"
                << "            cJSON* const item = "
                << (m.kind == 'l' ? "cJSON_CreateString(element.c_str())" : "element.ToJson()") << ";\n"
                << "            if (cJSON_AddItemToArray(list.get(), item) == 0) {\n                "
                   "cJSON_Delete(item);\n"
                << "                return nullptr;\n            }\n        }\n"
                << "        if (!Add(object, \"" << m.name << "\", list.release())) {\n";
            break;
        }
        out << "            return nullptr;\n        }\n    }\n";
    }
    out << "    return object.release();\n}\n\nconst char* set::" << name << "::RootName() const\n{\n    return \""
        << name << "\";\n}\n";
    return out.str();
}

void WriteModule(const std::string& folder, const std::string& kind, std::size_t module, std::size_t count,
                 std::size_t memberCount)
{
    static const std::map<std::string, std::string> sources = {
        {"table", "NEXWIRE_INBOUND_FIELDS(@, \"@\"#)\n"},
        {"outline", "OUTLINE_FIELDS(@, \"@\"#)\n"},
        {"inline", ""},
        {"operations", "OPERATION_FIELDS(@#)\n"},
        {"expanded", ""},
    };
    static const std::map<std::string, std::string> classes = {
        {"table", "    NEXWIRE_JSON\n"},    {"outline", "    OUTLINE(@)\n"}, {"inline", "    INLINE(@, \"@\"#)\n"},
        {"operations", "    OPERATIONS\n"}, {"expanded", "    EXPANDED\n"},
    };
    static const std::map<std::string, std::string> bases = {
        {"table", "protocol::IInboundData"},  {"outline", "protocol::IInboundData"},
        {"inline", "protocol::IInboundData"}, {"operations", "OperationBase"},
        {"expanded", "ExpandedBase"},
    };
    const std::string number = std::to_string(module);
    std::ofstream header(folder + "/Module" + number + ".h");
    std::ofstream source(folder + "/Module" + number + ".cpp");
    header << "#pragma once\n#include \"Variants.h\"\n";
    source << "#include \"Module" << number << ".h\"\n#include \"VariantsInside.h\"\n";
    for (std::size_t i = module * kPerModule; i < std::min(count, (module + 1) * kPerModule); ++i) {
        const std::string name = Name(i);
        const std::vector<Member> members = Members(i, memberCount);
        const std::string list = List(members);
        header << "namespace set {\nstruct " << (kind == "inline" ? "" : "SET_API ") << name << " : " << bases.at(kind)
               << " {\n";
        for (const Member& member : members) {
            header << "    " << member.type << ' ' << member.name << Initial(member) << ";\n";
        }
        header << Filled(classes.at(kind), name, list) << "};\n"
               << "SET_API bool Read(" << name << "& result, const cJSON* node);\n"
               << "SET_API cJSON* Write(const " << name << "& request);\n}\n";
        if (kind == "inline") {
            header << "INLINE_OPERATIONS(set::" << name << ")\n";
        }
        if (kind == "expanded") {
            source << Expanded(name, members);
        }
        source << "namespace set {\n"
               << Filled(sources.at(kind), name, list) << "bool Read(" << name
               << "& result, const cJSON* node)\n{\n    " << name
               << " fresh;\n    fresh.Parse(node);\n    result = std::move(fresh);\n    return node != nullptr;\n}\n"
               << "cJSON* Write(const " << name << "& request)\n{\n    return request.ToJson();\n}\n}\n";
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 5) {
        std::cerr << "usage: generate VARIANT COUNT MEMBERS FOLDER\n";
        return 2;
    }
    const std::string kind = argv[1];
    const std::size_t count = std::strtoul(argv[2], nullptr, 10);
    const std::size_t members = std::strtoul(argv[3], nullptr, 10);
    const std::string folder = argv[4];
    const std::size_t modules = (count + kPerModule - 1) / kPerModule;
    for (std::size_t module = 0; module < modules; ++module) {
        WriteModule(folder, kind, module, count, members);
    }
    std::ofstream include(folder + "/All.h");
    for (std::size_t module = 0; module < modules; ++module) {
        include << "#include \"Module" << module << ".h\"\n";
    }
    std::ofstream host(folder + "/Host.cpp");
    host << "#include \"All.h\"\nint Use(const cJSON* node)\n{\n    int read = 0;\n";
    for (std::size_t i = 0; i < std::min<std::size_t>(count, 20); ++i) {
        host << "    set::" << Name(i) << " record" << i << ";\n    read += set::Read(record" << i
             << ", node) ? 1 : 0;\n";
    }
    host << "    return read;\n}\n";
    // The list that the driver fills.
    std::ofstream(folder + "/Driver.h") << "#define MEMBER_LIST " << Members(5, members).back().name << "\n";
    return host.good() ? 0 : 1;
}

#include "tools/Reference.h"

#include <algorithm>
#include <set>
#include <vector>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "catalogue/Comments.h"
#include "catalogue/Find.h"
#include "catalogue/Observed.h"
#include "catalogue/Structures.h"
#include "tools/Example.h"
#include "tools/Verbs.h"

namespace nexwire::tools {

/// The page without its data, see reference/page.html.
extern const unsigned char kReferencePage[];
extern const std::size_t kReferencePageSize;

namespace {

using catalogue::Argument;
using Json = rapidjson::Writer<rapidjson::StringBuffer>;

void Text(Json& json, const std::string& text)
{
    json.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

/// Members that are empty are left out.
void Member(Json& json, const char* key, const std::string& text)
{
    if (!text.empty()) {
        json.Key(key);
        Text(json, text);
    }
}

void Arguments(Json& json, const catalogue::Observed& observed, const catalogue::FunctionDoc& doc,
               catalogue::Observer& observer)
{
    const std::vector<Argument>& arguments = observed.function->Arguments();
    json.Key("arguments");
    json.StartArray();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto said = std::find_if(doc.parameters.begin(), doc.parameters.end(),
                                       [&](const auto& each) { return each.first == arguments[i].name; });
        json.StartArray();
        Text(json, arguments[i].name);
        Text(json, catalogue::Spelled(*arguments[i].type));
        Text(json, arguments[i].type->IsStructure() ? arguments[i].type->name() : "");
        Text(json, !arguments[i].output                      ? ""
                   : observer.Travels(*observed.function, i) ? "given and returned"
                                                             : "result");
        Text(json, said == doc.parameters.end() ? "" : said->second);
        json.EndArray();
    }
    json.EndArray();
}

void Lines(Json& json, const char* key, const std::map<std::string, std::string>& fields)
{
    json.Key(key);
    json.StartArray();
    for (const auto& field : fields) {
        Text(json, field.first + ": " + field.second);
    }
    json.EndArray();
}

/// A parameter's type without const and reference, as a variable of it is declared, and its name.
std::pair<std::string, std::string> Variable(std::string parameter)
{
    const std::size_t space = parameter.find_last_of(' ');
    std::string name = parameter.substr(space + 1);
    std::string type = parameter.substr(0, space);
    for (const char* word : {"const ", "&"}) {
        const std::size_t at = type.find(word);
        if (at == 0 || (at != std::string::npos && *word == '&')) {
            type.erase(at, std::string(word).size());
        }
    }
    return {type, name};
}

/// What stands for an argument in a call: its variable, and the line that declares it.
std::string ArgumentCode(const std::string& parameter, std::string& declarations)
{
    const auto [type, name] = Variable(parameter);
    const bool plain = parameter.find('&') == std::string::npos || parameter.compare(0, 6, "const ") == 0;
    if (type == "std::string" && plain) {
        return "\"" + name + "\"";
    }
    if (type == "bool" && plain) {
        return "true";
    }
    if (type.find('*') != std::string::npos) {
        declarations += "protocol::DagPassThroughReq structure; // Any structure that is sent.\n";
        return "&structure";
    }
    if (name == "size") {
        return "sizeof(structure)";
    }
    if (plain && (type == "int" || type == "unsigned int" || type.find("int32_t") != std::string::npos ||
                  type.find("int64_t") != std::string::npos)) {
        return "1";
    }
    // What stands in no namespace is the library's own, in lists, too.
    const std::string vector = "std::vector<";
    const std::size_t element = type.compare(0, vector.size(), vector) == 0 ? vector.size() : 0;
    const bool own = type.find("::", element) == std::string::npos && type.compare(element, 3, "int") != 0 &&
                     type != "bool" && type != "double";
    const std::string start = type == "int" || type == "double" ? " = 0"
                              : type == "bool"                  ? " = false"
                              : type == "std::shared_ptr<int>"  ? " = std::make_shared<int>(0)"
                                                                : "";
    declarations +=
        type.substr(0, element) + (own ? "nexwire::" : "") + type.substr(element) + " " + name + start + ";\n";
    return name;
}

/// A call as a program has it.
std::string ExampleCode(const catalogue::Function& function)
{
    std::vector<std::string> parameters(1);
    int depth = 0;
    for (const char c : std::string(function.Row().parameters)) {
        depth += c == '<' ? 1 : c == '>' ? -1 : 0;
        if (c == ',' && depth == 0) {
            parameters.emplace_back();
        } else if (c != ' ' || !parameters.back().empty()) {
            parameters.back() += c;
        }
    }
    std::string declarations;
    std::string call = "nexwire::" + function.Name() + "(";
    for (const std::string& parameter : parameters) {
        if (!parameter.empty()) {
            call += (call.back() == '(' ? "" : ", ") + ArgumentCode(parameter, declarations);
        }
    }
    call += ")";
    const std::string result = function.Row().result;
    return declarations + (result == "bool"   ? "if (" + call + ") {\n    // done\n}"
                           : result == "void" ? call + ";"
                                              : "const auto answer = " + call + ";");
}

void FunctionData(Json& json, const catalogue::Observed& observed, catalogue::Observer& observer,
                  std::set<std::string>& used)
{
    const catalogue::Function& function = *observed.function;
    const catalogue::FunctionDoc doc = catalogue::DocOfFunction(function);
    json.StartObject();
    Member(json, "name", observed.name);
    Member(json, "module", function.Module());
    Member(json, "class", function.ClassName());
    Member(json, "declaration", catalogue::DeclarationOf(function));
    Member(json, "header", function.Header());
    Member(json, "example", ExampleCode(function));
    Member(json, "doc", doc.text);
    Member(json, "returns", doc.returns);
    json.Key("sent");
    json.Bool(observed.sent);
    json.Key("direct");
    json.Bool(observed.direct);
    Member(json, "path", observed.path);
    Member(json, "verb", VerbOf(observed.request.method));
    json.Key("method");
    json.Int(observed.request.method);
    json.Key("timeout");
    json.Int(observed.request.timeoutMs);
    Lines(json, "headers", observed.request.headers);
    Lines(json, "params", observed.request.params);
    json.Key("before");
    json.StartArray();
    for (const std::string& path : observed.before) {
        Text(json, path);
    }
    json.EndArray();
    if (observed.passThrough) {
        json.Key("command");
        json.Int(observed.command);
        Member(json, "condition", observed.condition);
    }
    Arguments(json, observed, doc, observer);
    const std::string structure = observed.direct ? observed.inputStructure : observed.bodyStructure;
    if (!observed.request.body.empty()) {
        Member(json, "body", Commented(Filled(observed.ShownBody(), structure), structure));
    }
    if (!observed.deviceInput.empty()) {
        Member(json, "device",
               Commented(Filled(observed.deviceInput, observed.inputStructure), observed.inputStructure));
    }
    Member(json, "output", observed.outputStructure);
    json.Key("outputIsList");
    json.Bool(observed.outputIsList);
    json.Key("structures");
    json.StartArray();
    for (const std::string& name : catalogue::StructuresOf(observed)) {
        used.insert(name);
        Text(json, name);
    }
    json.EndArray();
    json.EndObject();
}

void StructureData(Json& json, const std::string& name)
{
    const catalogue::StructureView view = catalogue::ViewOf(name);
    json.Key(name.c_str());
    json.StartObject();
    Member(json, "doc", view.doc);
    Member(json, "root", view.rootName);
    json.Key("members");
    json.StartArray();
    for (const catalogue::MemberView& member : view.members) {
        json.StartArray();
        Text(json, member.key);
        Text(json, member.type);
        Text(json, member.structure);
        Text(json, member.doc);
        json.EndArray();
    }
    json.EndArray();
    json.EndObject();
}

std::string Data()
{
    rapidjson::StringBuffer buffer;
    Json json(buffer);
    catalogue::Observer observer;
    std::vector<std::string> modules;
    std::set<std::string> classes;
    std::set<std::string> used;
    json.StartObject();
    json.Key("functions");
    json.StartArray();
    for (const catalogue::Function& function : catalogue::All()) {
        FunctionData(json, observer.Observe(function), observer, used);
        classes.insert(function.ClassName());
        if (std::find(modules.begin(), modules.end(), function.Module()) == modules.end()) {
            modules.push_back(function.Module());
        }
    }
    json.EndArray();
    json.Key("modules");
    json.StartArray();
    for (const std::string& module : modules) {
        Text(json, module);
    }
    json.EndArray();
    json.Key("classes");
    json.StartObject();
    for (const std::string& name : classes) {
        json.Key(name.c_str());
        json.StartArray();
        Text(json, catalogue::DocOfClass(name));
        Text(json, catalogue::RemarkOfClass(name));
        json.EndArray();
    }
    json.EndObject();
    json.Key("structures");
    json.StartObject();
    for (const catalogue::StructureInfo& structure : catalogue::Structures()) {
        used.insert(structure.name);
    }
    const std::vector<std::string> all = catalogue::Reachable(std::vector<std::string>(used.begin(), used.end()));
    for (const std::string& name : std::set<std::string>(all.begin(), all.end())) {
        StructureData(json, name);
    }
    json.EndObject();
    json.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize());
}

std::string Escaped(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        escaped += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c);
    }
    return escaped;
}

/// Comments for a page without scripts: what stands in backticks is code.
std::string Prose(const std::string& text)
{
    std::string prose;
    bool code = false;
    for (const char c : Escaped(text)) {
        code = code != (c == '`');
        prose += c == '`' ? (code ? "<code>" : "</code>") : c == '\n' ? "</p><p>" : std::string(1, c);
    }
    return prose + (code ? "</code>" : "");
}

std::string StaticModules()
{
    std::string links;
    std::string module;
    for (const catalogue::Function& function : catalogue::All()) {
        if (function.Module() != module) {
            module = function.Module();
            links += "<a href=\"#" + module + "\">" + module + "</a>";
        }
    }
    return links + "<a href=\"#structures\">Structures</a>";
}

/// What stands on the page until a script takes over: all functions with their declarations and comments, and the
/// members of all structures.
std::string StaticPage()
{
    std::string page = "<h1>Request functions</h1>\n";
    std::string module;
    for (const catalogue::Function& function : catalogue::All()) {
        const catalogue::FunctionDoc doc = catalogue::DocOfFunction(function);
        if (function.Module() != module) {
            module = function.Module();
            page += "<h2 id=\"" + module + "\">" + module + "</h2>\n";
        }
        page += "<h3>" + Escaped(catalogue::UniqueName(function)) + "</h3><p>" +
                Prose(doc.text.empty() ? catalogue::DocOfClass(function.ClassName()) : doc.text) +
                "</p><pre>#include &lt;" + function.Header() + "&gt;\n" + Escaped(catalogue::DeclarationOf(function)) +
                "</pre>\n";
    }
    page += "<h2 id=\"structures\">Structures</h2>\n";
    for (const catalogue::StructureInfo& structure : catalogue::Structures()) {
        const catalogue::StructureView view = catalogue::ViewOf(structure.name);
        page += "<h3>" + Escaped(view.name) + "</h3><p>" + Prose(view.doc) + "</p><table class=\"members\">";
        for (const catalogue::MemberView& member : view.members) {
            page += "<tr><td class=\"mono\">" + Escaped(member.key) + "</td><td>" + Escaped(member.type) + "</td><td>" +
                    Prose(member.doc) + "</td></tr>";
        }
        page += "</table>\n";
    }
    return page;
}

void ReplaceOnce(std::string& text, const std::string& mark, const std::string& by)
{
    const std::size_t at = text.find(mark);
    if (at != std::string::npos) {
        text.replace(at, mark.size(), by);
    }
}

} // namespace

std::string ReferencePage()
{
    std::string page(reinterpret_cast<const char*>(kReferencePage), kReferencePageSize);
    std::string data = Data();
    // "</script" within a text would end the data.
    for (std::size_t at = data.find("</"); at != std::string::npos; at = data.find("</", at + 3)) {
        data.replace(at, 2, "<\\/");
    }
    ReplaceOnce(page, "@VERSION@", NEXWIRE_VERSION);
    ReplaceOnce(page, "@MODULES@", StaticModules());
    ReplaceOnce(page, "@FUNCTIONS@", StaticPage());
    ReplaceOnce(page, "@DATA@", data);
    return page;
}

} // namespace nexwire::tools

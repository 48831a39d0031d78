#include <algorithm>
#include <map>

#include "catalogue/Comments.h"
#include "catalogue/Find.h"
#include "catalogue/Observed.h"
#include "catalogue/Structures.h"
#include "tools/Commands.h"
#include "tools/Example.h"
#include "tools/Json.h"
#include "tools/Verbs.h"

namespace nexwire::tools {
namespace {

constexpr std::size_t kTextWidth = 98;

std::string Row(const Style& style, const std::string& name, const std::string& value)
{
    return "  " + style.Faint(Padded(name, 12)) + value + "\n";
}

std::string Indented(const std::string& text, const std::string& indent)
{
    std::string result;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        result += indent + text.substr(begin, end - begin) + "\n";
        begin = end + 1;
    }
    return result;
}

std::string Request(const catalogue::Observed& observed, const Style& style)
{
    std::string text = style.Heading("Request") + "\n";
    if (!observed.sent) {
        return text + "  Sends nothing by itself.\n\n";
    }
    text += Row(style, "path", observed.path);
    text += Row(style, "method",
                observed.direct
                    ? VerbOf(observed.request.method) + ", straight to the video wall service"
                    : "code " + std::to_string(observed.request.method) + " (" + MeaningOf(observed.request.method) +
                          "), " + VerbOf(observed.request.method) + " by default");
    for (const auto& header : observed.request.headers) {
        text += Row(style, "header", header.first + ": " + header.second);
    }
    for (const auto& param : observed.request.params) {
        text += Row(style, "param", param.first + ": " + param.second);
    }
    if (!observed.direct) {
        text += Row(style, "time-out", std::to_string(observed.request.timeoutMs) + " ms");
    }
    for (const std::string& before : observed.before) {
        text += Row(style, "before it", before);
    }
    if (observed.passThrough) {
        text += Row(style, "command", std::to_string(observed.command) + ", relayed to the device");
        if (!observed.condition.empty()) {
            text += Row(style, "condition", observed.condition);
        }
    }
    return text + "\n";
}

std::string Body(const catalogue::Observed& observed, const Style& style)
{
    std::string text = style.Heading("Body") + "\n";
    if (observed.request.body.empty()) {
        return text + "  none\n\n";
    }
    const std::string structure = observed.direct ? observed.inputStructure : observed.bodyStructure;
    text += Indented(Commented(Filled(observed.ShownBody(), structure), structure), "  ") + "\n";
    if (!observed.deviceInput.empty()) {
        text += style.Heading("What the device receives (inBuffer)") + "\n";
        text +=
            Indented(Commented(Filled(observed.deviceInput, observed.inputStructure), observed.inputStructure), "  ") +
            "\n";
    }
    return text;
}

std::string Arguments(const catalogue::Function& function, const catalogue::FunctionDoc& doc,
                      catalogue::Observer& observer, const Style& style)
{
    if (function.Arguments().empty()) {
        return "";
    }
    std::string text = style.Heading("Arguments") + "\n";
    std::size_t width = 0;
    for (const catalogue::Argument& argument : function.Arguments()) {
        width = std::max(width, argument.name.size());
    }
    for (std::size_t i = 0; i < function.Arguments().size(); ++i) {
        const catalogue::Argument& argument = function.Arguments()[i];
        std::string about = catalogue::Spelled(*argument.type);
        if (argument.output) {
            about += observer.Travels(function, i) ? ", given and returned" : ", result";
        }
        const auto said = std::find_if(doc.parameters.begin(), doc.parameters.end(),
                                       [&](const auto& each) { return each.first == argument.name; });
        if (said != doc.parameters.end()) {
            about += ": " + said->second;
        }
        text += "  " + style.Name(Padded(argument.name, width)) + "  " + about + "\n";
    }
    return text + "\n";
}

std::string Structures(const std::vector<std::string>& names, const Style& style)
{
    std::string text;
    for (const std::string& name : catalogue::Reachable(names)) {
        const catalogue::StructureView view = catalogue::ViewOf(name);
        text += (text.empty() ? style.Heading("Structures") + "\n" : "\n") + std::string("  ") + style.Name(name) +
                (view.rootName.empty() ? "" : style.Faint("  sent as \"" + view.rootName + "\"")) + "\n";
        text += Wrapped(view.doc, kTextWidth - 4, "    ");
        std::size_t keys = 0;
        std::size_t types = 0;
        for (const catalogue::MemberView& member : view.members) {
            keys = std::max(keys, member.key.size());
            types = std::max(types, member.type.size());
        }
        for (const catalogue::MemberView& member : view.members) {
            const std::string line = "    " + Padded(member.key, keys) + "  " + Padded(member.type, types);
            const std::size_t room = line.size() + 22 < kTextWidth ? kTextWidth - line.size() : 20;
            std::string doc = Wrapped(member.doc, room, std::string(line.size() + 2, ' '));
            doc.erase(0, std::min(doc.size(), line.size() + 2));
            text += doc.empty() ? line.substr(0, line.find_last_not_of(' ') + 1) + "\n" : line + "  " + doc;
        }
        if (view.members.empty()) {
            text += "    carries nothing\n";
        }
    }
    return text;
}

/// Structures and what is in them, for programs.
std::string StructuresAsJson(const std::vector<std::string>& names)
{
    return JsonArray(catalogue::Reachable(names), [](const std::string& name) {
        const catalogue::StructureView view = catalogue::ViewOf(name);
        const std::string members = JsonArray(view.members, [](const catalogue::MemberView& member) {
            return JsonObject().Text("key", member.key).Text("type", member.type).Text("doc", member.doc).Done();
        });
        return JsonObject()
            .Text("structure", name)
            .Text("root", view.rootName)
            .Text("doc", view.doc)
            .Json("members", members)
            .Done();
    });
}

std::string Page(const catalogue::Observed& observed, catalogue::Observer& observer, const Style& style)
{
    const catalogue::Function& function = *observed.function;
    const catalogue::FunctionDoc doc = catalogue::DocOfFunction(function);
    std::string text = style.Heading(observed.name) + style.Faint("  " + function.Module()) + "\n";
    text += Wrapped(doc.text, kTextWidth, "  ");
    if (!doc.returns.empty()) {
        text += Wrapped("Returns " + doc.returns, kTextWidth, "  ");
    }
    text += Wrapped(catalogue::DocOfClass(function.ClassName()), kTextWidth, "  ");
    text += Wrapped(catalogue::RemarkOfClass(function.ClassName()), kTextWidth, "  ");
    text += "\n" +
            Indented("#include <" + std::string(function.Header()) + ">\n" + catalogue::DeclarationOf(function), "  ") +
            "\n";
    text += Request(observed, style) + Arguments(function, doc, observer, style) + Body(observed, style);
    text += style.Heading("Result") + "\n";
    if (observed.outputStructure.empty()) {
        text += "  none\n\n";
    } else {
        text += "  " + std::string(observed.outputIsList ? "list of " : "") + observed.outputStructure + "\n\n";
    }
    return text + Structures(catalogue::StructuresOf(observed), style);
}

/// A function for programs.
std::string PageAsJson(const catalogue::Observed& observed, catalogue::Observer& observer)
{
    const catalogue::Function& function = *observed.function;
    const catalogue::FunctionDoc doc = catalogue::DocOfFunction(function);
    const auto fields = [](const std::map<std::string, std::string>& map) {
        JsonObject object;
        for (const auto& entry : map) {
            object.Text(entry.first.c_str(), entry.second);
        }
        return object.Done();
    };
    std::size_t index = 0;
    const std::string arguments = JsonArray(function.Arguments(), [&](const catalogue::Argument& argument) {
        const auto said = std::find_if(doc.parameters.begin(), doc.parameters.end(),
                                       [&](const auto& each) { return each.first == argument.name; });
        const bool given = !argument.output || observer.Travels(function, index);
        ++index;
        return JsonObject()
            .Text("name", argument.name)
            .Text("type", catalogue::Spelled(*argument.type))
            .Bool("input", given)
            .Bool("output", argument.output)
            .Bool("required", argument.required())
            .Text("doc", said == doc.parameters.end() ? "" : said->second)
            .Done();
    });
    JsonObject object;
    object.Text("function", observed.name).Text("module", function.Module()).Text("header", function.Header());
    object.Text("declaration", catalogue::DeclarationOf(function)).Text("doc", doc.text).Text("returns", doc.returns);
    object.Bool("sends", observed.sent).Bool("videoWall", observed.direct);
    object.Number("method", observed.request.method).Text("verb", VerbOf(observed.request.method));
    object.Text("path", observed.path).Number("timeoutMs", observed.request.timeoutMs);
    object.Json("headers", fields(observed.request.headers)).Json("params", fields(observed.request.params));
    object.Json("before", JsonArray(observed.before, catalogue::WriteText));
    object.Number("command", observed.passThrough ? observed.command : 0).Text("condition", observed.condition);
    object.Json("arguments", arguments);
    object.Text("bodyStructure", observed.bodyStructure).Text("inputStructure", observed.inputStructure);
    object.Text("body", observed.request.body);
    object.Text("result", observed.outputStructure).Bool("resultIsList", observed.outputIsList);
    object.Json("structures", StructuresAsJson(catalogue::StructuresOf(observed)));
    return object.Done();
}

/// The functions that take or hand out a structure, whether by itself or inside another one.
std::vector<std::string> UsersOf(const std::string& structure)
{
    std::vector<std::string> users;
    std::map<std::string, bool> holds; // A structure's name, and whether the one asked for is in it.
    for (const catalogue::Function& function : catalogue::All()) {
        for (const catalogue::Argument& argument : function.Arguments()) {
            if (!argument.type->IsStructure()) {
                continue;
            }
            const std::string name = argument.type->name();
            const auto known = holds.find(name);
            bool there = known != holds.end() && known->second;
            if (known == holds.end()) {
                const std::vector<std::string> inside = catalogue::Reachable({name});
                there = std::find(inside.begin(), inside.end(), structure) != inside.end();
                holds.emplace(name, there);
            }
            if (there) {
                users.push_back(catalogue::UniqueName(function));
                break;
            }
        }
    }
    return users;
}

std::string StructurePage(const std::string& structure, const Style& style)
{
    std::string text = Structures({structure}, style);
    const std::vector<std::string> users = UsersOf(structure);
    if (!users.empty()) {
        text += "\n" + style.Heading("Used by") + "\n";
        for (const std::string& user : users) {
            text += "  " + style.Name(user) + "\n";
        }
    }
    return text;
}

/// The structure that a name means, in either case; empty when there is none.
std::string StructureNamed(const std::string& name)
{
    const std::string wanted = catalogue::LowerCase(name);
    std::string found;
    for (const catalogue::StructureInfo& structure : catalogue::Structures()) {
        if (structure.name == name) {
            return name;
        }
        if (catalogue::LowerCase(structure.name) == wanted) {
            found = structure.name;
        }
    }
    return found.empty() && !catalogue::ViewOf(name).members.empty() ? name : found;
}

} // namespace

int Describe(const DescribeOptions& options, const Style& style)
{
    const std::vector<const catalogue::Function*> found = catalogue::Find(options.function);
    if (found.empty()) {
        const std::string structure = options.argumentsOnly ? std::string() : StructureNamed(options.function);
        if (structure.empty()) {
            return UnknownFunction(options.function);
        }
        if (options.json) {
            return Output(Pretty(JsonObject()
                                     .Text("structure", structure)
                                     .Json("structures", StructuresAsJson({structure}))
                                     .Json("usedBy", JsonArray(UsersOf(structure), catalogue::WriteText))
                                     .Done()) +
                          "\n");
        }
        return Output(StructurePage(structure, style));
    }
    if (options.argumentsOnly) {
        std::vector<std::string> names;
        for (const catalogue::Function* function : found) {
            for (const catalogue::Argument& argument : function->Arguments()) {
                if (argument.input() && std::find(names.begin(), names.end(), argument.name) == names.end()) {
                    names.push_back(argument.name);
                }
            }
        }
        std::string text;
        for (const std::string& name : names) {
            text += name + "\n";
        }
        return Output(text);
    }
    if (found.size() > 1) {
        std::string text = "'" + options.function + "' means several functions; name one of";
        for (const catalogue::Function* function : found) {
            text += "\n  " + catalogue::UniqueName(*function);
        }
        Complain(text);
        return kUsage;
    }
    catalogue::Observer observer;
    const catalogue::Observed observed = observer.Observe(*found.front());
    return Output(options.json ? Pretty(PageAsJson(observed, observer)) + "\n" : Page(observed, observer, style));
}

std::string UnknownFunctionText(const std::string& name)
{
    std::string text = "there is no function '" + name + "'";
    std::vector<std::string> similar = catalogue::Similar(name);
    std::vector<std::string> structures;
    for (const catalogue::StructureInfo& structure : catalogue::Structures()) {
        structures.push_back(structure.name);
    }
    for (const std::string& structure : catalogue::Closest(name, structures)) {
        similar.push_back(structure);
    }
    for (const std::string& each : similar) {
        text += (&each == &similar.front() ? "; did you mean\n  " : "\n  ") + each;
    }
    return text;
}

int UnknownFunction(const std::string& name)
{
    Complain(UnknownFunctionText(name));
    return kUsage;
}

} // namespace nexwire::tools

#include <algorithm>

#include "catalogue/Comments.h"
#include "catalogue/Find.h"
#include "catalogue/Observed.h"
#include "tools/Commands.h"
#include "tools/Example.h"
#include "tools/Verbs.h"

namespace nexwire {
namespace tools {
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

std::string Structures(const catalogue::Observed& observed, const Style& style)
{
    std::string text;
    for (const std::string& name : catalogue::Reachable(catalogue::StructuresOf(observed))) {
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
    return text + Structures(observed, style);
}

} // namespace

int Describe(const DescribeOptions& options, const Style& style)
{
    const std::vector<const catalogue::Function*> found = catalogue::Find(options.function);
    if (found.empty()) {
        return UnknownFunction(options.function);
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
        Print(text);
        return kDone;
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
    Print(Page(observer.Observe(*found.front()), observer, style));
    return kDone;
}

int UnknownFunction(const std::string& name)
{
    std::string text = "there is no function '" + name + "'";
    const std::vector<std::string> similar = catalogue::Similar(name);
    for (const std::string& each : similar) {
        text += (&each == &similar.front() ? "; did you mean\n  " : "\n  ") + each;
    }
    Complain(text);
    return kUsage;
}

} // namespace tools
} // namespace nexwire

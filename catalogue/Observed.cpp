#include "catalogue/Observed.h"

#include <algorithm>
#include <set>

#include <rapidjson/document.h>
#include <rapidjson/pointer.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "catalogue/Comments.h"
#include "catalogue/Find.h"
#include "catalogue/Structures.h"

namespace nexwire::catalogue {

namespace {

/// How people are told what a member is.
std::string Told(core::Kind kind, const std::string& structure)
{
    switch (kind) {
    case core::Kind::Text:
        return "text";
    case core::Kind::Int:
        return "integer";
    case core::Kind::Int64:
        return "integer of 64 bits";
    case core::Kind::Real:
        return "number";
    case core::Kind::Bool:
        return "true or false";
    case core::Kind::Struct:
        return structure;
    case core::Kind::TextList:
        return "list of texts";
    case core::Kind::IntList:
        return "list of integers";
    case core::Kind::StructList:
        return "list of " + structure;
    }
    return "";
}

MemberView MakeView(const MemberDoc& declared, core::Kind kind, const std::string& structure)
{
    MemberView member;
    member.key = declared.key;
    member.kind = kind;
    member.type = Told(kind, structure);
    member.structure = structure;
    member.list = kind == core::Kind::TextList || kind == core::Kind::IntList || kind == core::Kind::StructList;
    member.doc = declared.text;
    member.limits = declared.limits;
    return member;
}

void Replace(std::string& text, const std::string& from, const std::string& to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

/// JSON of a structure whose texts name their members, so that one that ends up in the path shows. Nested structures
/// are left alone: none goes into a path.
std::string TellingTexts(const core::FieldTable& fields)
{
    std::string json = "{";
    for (const core::Field& field : fields) {
        if (field.kind == core::Kind::Text) {
            json += (json.size() > 1 ? ",\"" : "\"") + std::string(field.key) + "\":\"{" + field.key + "}\"";
        }
    }
    return json + "}";
}

/// JSON of a structure in which nothing has its default.
std::string UnlikeDefaults(const core::FieldTable& fields)
{
    std::string json = "{";
    for (const core::Field& field : fields) {
        std::string value;
        switch (field.kind) {
        case core::Kind::Text:
            value = "\"?\"";
            break;
        case core::Kind::Int:
        case core::Kind::Int64:
        case core::Kind::Real:
            value = "97";
            break;
        case core::Kind::Bool:
            value = "true";
            break;
        case core::Kind::TextList:
            value = "[\"?\"]";
            break;
        case core::Kind::IntList:
            value = "[97]";
            break;
        case core::Kind::Struct:
            value = UnlikeDefaults(*field.ops->fields);
            break;
        case core::Kind::StructList:
            continue;
        }
        json += (json.size() > 1 ? ",\"" : "\"") + std::string(field.key) + "\":" + value;
    }
    return json + "}";
}

/// The path and the condition with everything that varies by name.
class Placeholders {
public:
    Placeholders(const Recorder& recorder, const Function& function) : recorder_(recorder), call_(function)
    {
        std::string ignored;
        for (std::size_t i = 0; i < function.Arguments().size(); ++i) {
            const Argument& argument = function.Arguments()[i];
            if (!argument.input()) {
                continue;
            }
            switch (argument.type->shape) {
            case Shape::Text:
                call_.Set(i, recorder_.Stand(argument), ignored);
                break;
            case Shape::Integer:
                numbers_.emplace_back(std::to_string(kFirstNumber + static_cast<int>(i)), argument.name);
                call_.Set(i, numbers_.back().first, ignored);
                break;
            case Shape::TextList:
                call_.Set(i, "[\"{" + argument.name + "}\"]", ignored);
                break;
            case Shape::Structure:
                call_.Set(i, TellingTexts(*argument.type->fields()), ignored);
                break;
            default:
                break;
            }
        }
    }

    Call& call() { return call_; }

    std::string Named(std::string text) const
    {
        for (const auto& number : numbers_) {
            Replace(text, number.first, "{" + number.second + "}");
        }
        return recorder_.Named(call_.function(), text);
    }

private:
    /// No number of any request comes near.
    static constexpr int kFirstNumber = 1913774000;

    const Recorder& recorder_;
    Call call_;
    std::vector<std::pair<std::string, std::string>> numbers_;
};

struct DeviceCommand {
    int command = 0;
    std::string condition;
    std::string input;
    bool batch = false;
};

/// Whether a body relays a command to a device, and which.
bool ReadDeviceCommand(const std::string& body, DeviceCommand& command)
{
    rapidjson::Document document;
    if (document.Parse(body.c_str()).HasParseError() || !document.IsObject() || document.MemberCount() != 1) {
        return false;
    }
    const std::string root = document.MemberBegin()->name.GetString();
    const rapidjson::Value& request = document.MemberBegin()->value;
    if ((root != "dagPassThroughReq" && root != "batchPassThroughReq") || !request.IsObject() ||
        !request.HasMember("command")) {
        return false;
    }
    command.batch = root == "batchPassThroughReq";
    command.command = request["command"].GetInt();
    const auto text = [&](const char* key) {
        const auto found = request.FindMember(key);
        return found != request.MemberEnd() && found->value.IsString() ? std::string(found->value.GetString()) : "";
    };
    command.condition = text("condBuffer");
    command.input = text("inBuffer");
    return true;
}

std::string RootOf(const std::string& body)
{
    rapidjson::Document document;
    const bool wraps = !document.Parse(body.c_str()).HasParseError() && document.IsObject() &&
                       document.MemberCount() == 1 && document.MemberBegin()->value.IsObject();
    return wraps ? document.MemberBegin()->name.GetString() : "";
}

/// The structure whose members a body's root name announces: one of the function's own, or else one that has them all.
std::string StructureOfBody(const Function& function, const std::string& body)
{
    rapidjson::Document document;
    if (document.Parse(body.c_str()).HasParseError() || !document.IsObject() || document.MemberCount() != 1 ||
        !document.MemberBegin()->value.IsObject()) {
        return "";
    }
    const std::string root = document.MemberBegin()->name.GetString();
    const rapidjson::Value& members = document.MemberBegin()->value;
    for (const Argument& argument : function.Arguments()) {
        const core::FieldTable* const fields = argument.type->fields();
        if (argument.type->shape == Shape::Structure && fields->rootName != nullptr && root == fields->rootName) {
            return argument.type->name();
        }
    }
    for (const StructureInfo& structure : Structures()) {
        if (!structure.inbound || root != structure.fields->rootName) {
            continue;
        }
        const bool all = std::all_of(members.MemberBegin(), members.MemberEnd(), [&](const auto& member) {
            return std::any_of(structure.fields->begin(), structure.fields->end(), [&](const core::Field& field) {
                return std::string_view(field.key) == member.name.GetString();
            });
        });
        if (all) {
            return structure.name;
        }
    }
    return "";
}

} // namespace

StructureView ViewOf(const std::string& structure)
{
    StructureView view;
    view.name = structure;
    view.doc = DocOfStruct(structure);
    const std::vector<MemberDoc> docs = MembersOf(structure);
    const StructureInfo* const known = FindStructure(structure);
    const RecordTable* const record = known == nullptr ? FindRecord(structure) : nullptr;
    if (known != nullptr) {
        view.rootName = known->fields->rootName == nullptr ? "" : known->fields->rootName;
        for (std::size_t i = 0; i < docs.size(); ++i) {
            const core::Field& field = known->fields->fields[i];
            view.members.push_back(
                MakeView(docs[i], field.kind, field.ops == nullptr ? "" : NameOf(*field.ops->fields)));
        }
    } else if (record != nullptr) {
        for (std::size_t i = 0; i < docs.size(); ++i) {
            const RecordMember& member = record->members.data[i];
            view.members.push_back(MakeView(docs[i], member.kind, member.record));
        }
    }
    return view;
}

std::vector<std::string> Reachable(const std::vector<std::string>& structures)
{
    std::vector<std::string> all;
    std::set<std::string> seen;
    const auto add = [&](const std::string& name) {
        if (!name.empty() && seen.insert(name).second) {
            all.push_back(name);
        }
    };
    for (const std::string& name : structures) {
        add(name);
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (const MemberView& member : ViewOf(all[i]).members) {
            add(member.structure);
        }
    }
    return all;
}

std::string Observed::ShownBody() const
{
    rapidjson::Document document;
    if (deviceInput.empty() || document.Parse(request.body.c_str()).HasParseError()) {
        return request.body;
    }
    const std::string wrapper = document.MemberBegin()->name.GetString();
    rapidjson::Pointer(("/" + wrapper + "/inBuffer").c_str()).Set(document, "<JSON text, see below>");
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    document.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize());
}

Observed Observer::Observe(const Function& function)
{
    Observed observed;
    observed.function = &function;
    observed.name = UniqueName(function);
    for (const Argument& argument : function.Arguments()) {
        if (!argument.type->IsStructure()) {
            continue;
        }
        std::string& slot = argument.output ? observed.outputStructure : observed.inputStructure;
        if (slot.empty()) {
            slot = argument.type->name();
            if (argument.output) {
                observed.outputIsList = argument.type->IsList();
            }
        }
        if (argument.output && argument.type->shape == Shape::Record && observed.inputStructure.empty()) {
            observed.inputStructure = argument.type->name();
        }
    }

    Trace trace = recorder_.Run(function);
    observed.sent = trace.sent;
    observed.direct = trace.direct;
    observed.before = std::move(trace.before);
    observed.request = std::move(trace.request);
    observed.path = observed.request.url;
    observed.request.headers.erase("Content-Length");
    if (observed.direct) {
        observed.wallData = AnswerRead(trace.reads);
    }
    if (!observed.sent || observed.direct) {
        return observed;
    }
    observed.needsData = !trace.success;
    observed.handsOut = trace.handsOut;
    observed.dataStructure = trace.reads.data == nullptr ? "" : NameOf(*trace.reads.data);
    DeviceCommand command;
    observed.passThrough = ReadDeviceCommand(observed.request.body, command);
    observed.batch = command.batch;
    observed.command = command.command;
    observed.condition = command.condition;
    observed.deviceInput = command.input;
    observed.bodyStructure = StructureOfBody(function, observed.request.body);
    observed.root = RootOf(observed.request.body);

    Placeholders placeholders(recorder_, function);
    const Trace named = recorder_.Run(placeholders.call());
    if (named.sent) {
        observed.path = placeholders.Named(named.request.url);
        if (ReadDeviceCommand(named.request.body, command)) {
            observed.condition = placeholders.Named(command.condition);
        }
        for (const auto& header : named.request.headers) {
            observed.request.headers[header.first] = placeholders.Named(header.second);
        }
    }
    return observed;
}

std::vector<std::string> StructuresOf(const Observed& observed)
{
    std::vector<std::string> names;
    for (const Argument& argument : observed.function->Arguments()) {
        if (argument.type->IsStructure()) {
            names.push_back(argument.type->name());
        }
    }
    const bool known = std::find(names.begin(), names.end(), observed.bodyStructure) != names.end();
    if (!observed.bodyStructure.empty() && !known && (!observed.passThrough || names.empty())) {
        names.push_back(observed.bodyStructure);
    }
    return names;
}

std::string DeclarationOf(const Function& function)
{
    constexpr std::size_t kLong = 98;
    std::string declaration = DocOfFunction(function).declaration;
    if (declaration.empty()) {
        declaration = function.Signature();
    }
    if (declaration.size() <= kLong) {
        return declaration;
    }
    std::string text;
    for (const char c : declaration) {
        if (c == ' ' && !text.empty() && text.back() == ',') {
            text += "\n    ";
            continue;
        }
        text += c;
        text += c == '(' ? "\n    " : "";
    }
    return text;
}

bool Observer::Travels(const Function& function, std::size_t index)
{
    const Argument& argument = function.Arguments()[index];
    if (!argument.output) {
        return true;
    }
    if (!argument.input() || !argument.type->IsStructure()) {
        return argument.input();
    }
    Call plain(function);
    Call changed(function);
    if (argument.type->shape == Shape::Record) {
        changed.Sample(index);
    } else {
        std::string ignored;
        changed.Set(index, UnlikeDefaults(*argument.type->fields()), ignored);
    }
    const Trace before = recorder_.Run(plain);
    const Trace after = recorder_.Run(changed);
    return before.sent != after.sent || before.request.url != after.request.url ||
           before.request.body != after.request.body;
}

} // namespace nexwire::catalogue

#include "tools/OpenApi.h"

#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "catalogue/Comments.h"
#include "catalogue/Find.h"
#include "catalogue/Observed.h"
#include "catalogue/Structures.h"
#include "nexwire/host/HttpRequestExecutor.h"
#include "tools/Example.h"
#include "tools/Verbs.h"

namespace nexwire::tools {
namespace {

using catalogue::Argument;
using catalogue::Shape;
using rapidjson::Value;

constexpr const char* kSchemas = "#/components/schemas/";

/// Name of a structure's schema: the format has no colons in names.
std::string SchemaOf(std::string structure)
{
    const std::size_t colons = structure.find("::");
    return colons == std::string::npos ? structure : structure.replace(colons, 2, ".");
}

/// Names of the identifiers in a path, in order.
std::vector<std::string> ParametersOf(const std::string& path)
{
    std::vector<std::string> names;
    for (std::size_t open = path.find('{'); open != std::string::npos; open = path.find('{', open + 1)) {
        const std::size_t close = path.find('}', open);
        if (close == std::string::npos) {
            break;
        }
        names.push_back(path.substr(open + 1, close - open - 1));
    }
    return names;
}

/// What tells a path from others: two that differ in the names of identifiers only are one.
std::string WithoutNames(const std::string& path)
{
    std::string bare;
    bool inside = false;
    for (const char c : path) {
        inside = c == '{' || (inside && c != '}');
        if (!inside || c == '{') {
            bare += c;
        }
    }
    return bare;
}

std::string OperationId(const catalogue::Observed& observed)
{
    std::string id = observed.name;
    for (std::size_t at = id.find("::"); at != std::string::npos; at = id.find("::")) {
        id.replace(at, 2, ".");
    }
    for (char& c : id) {
        c = c == '(' ? '.' : c == ',' ? '.' : c;
    }
    id.erase(std::remove_if(id.begin(), id.end(), [](char c) { return c == ')' || c == ' '; }), id.end());
    return id;
}

bool IsJson(const std::string& text)
{
    rapidjson::Document document;
    return !document.Parse(text.c_str()).HasParseError();
}

class Writer {
public:
    std::string Document()
    {
        document_.SetObject();
        Info();
        catalogue::Observer observer;
        std::vector<catalogue::Observed> all;
        for (const catalogue::Function& function : catalogue::All()) {
            catalogue::Observed observed = observer.Observe(function);
            if (observed.sent) {
                all.push_back(std::move(observed));
            }
        }
        Tags(all);
        Paths(all);
        Further();
        Components();
        rapidjson::StringBuffer buffer;
        rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
        writer.SetIndent(' ', 2);
        document_.Accept(writer);
        return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
    }

private:
    using Group = std::vector<const catalogue::Observed*>;

    Value Text(const std::string& text)
    {
        return Value(text.c_str(), static_cast<rapidjson::SizeType>(text.size()), document_.GetAllocator());
    }
    Value Object() { return Value(rapidjson::kObjectType); }
    Value Array() { return Value(rapidjson::kArrayType); }
    void Add(Value& object, const std::string& key, Value value)
    {
        object.AddMember(Text(key), value, document_.GetAllocator());
    }
    void Add(Value& object, const std::string& key, const std::string& text) { Add(object, key, Text(text)); }
    void Push(Value& array, Value value) { array.PushBack(value, document_.GetAllocator()); }
    Value Json(const std::string& json)
    {
        rapidjson::Document parsed(&document_.GetAllocator());
        parsed.Parse(json.c_str());
        Value value;
        value.CopyFrom(parsed, document_.GetAllocator());
        return value;
    }
    Value Reference(const std::string& structure)
    {
        used_.insert(structure);
        Value reference = Object();
        Add(reference, "$ref", kSchemas + SchemaOf(structure));
        return reference;
    }
    /// One schema as it is, several as alternatives.
    Value AnyOf(std::vector<Value> schemas)
    {
        if (schemas.size() == 1) {
            return std::move(schemas.front());
        }
        Value list = Array();
        for (Value& schema : schemas) {
            Push(list, std::move(schema));
        }
        Value any = Object();
        Add(any, "anyOf", std::move(list));
        return any;
    }
    Value OfType(const std::string& type)
    {
        Value schema = Object();
        Add(schema, "type", type);
        return schema;
    }

    void Info()
    {
        Add(document_, "openapi", "3.1.0");
        Value info = Object();
        Add(info, "title", "Security-management platform, as the nexwire library speaks to it");
        Add(info, "version", NEXWIRE_VERSION);
        Add(info, "contact", Json(R"({"name": "The nexwire project"})"));
        Add(info, "license", Json(R"({"name": "MIT", "identifier": "MIT"})"));
        Add(info, "description",
            "Every request of the library, found by running its functions. Functions that share a path and a verb "
            "stand in one operation; `x-nexwire-functions` names them, and each has an example of its body.\n\n"
            "The library names a method code, 0 to 3; the verbs are those that its ready-made transport maps them to, "
            "see `x-nexwire-verbs`. Some reads and deletions carry a body with GET or DELETE: that is what is sent.\n\n"
            "Every answer is the envelope: `code` is two numbers joined by a hyphen, the second 0 for success, and "
            "`data` holds the result.");
        Add(document_, "info", std::move(info));
        Add(document_, "servers", Server("https://{host}:{port}", "The platform", "platform.example", "443"));
        Add(document_, "security", Json(R"([{"credentials": []}, {}])"));
        Value verbs = Object();
        for (const auto& verb : host::HttpExecutorOptions().verbs) {
            Add(verbs, std::to_string(verb.first), verb.second);
        }
        Add(document_, "x-nexwire-verbs", std::move(verbs));
    }

    Value Server(const std::string& url, const std::string& description, const std::string& host,
                 const std::string& port)
    {
        Value variables = Object();
        for (const auto& variable : {std::make_pair("host", host), std::make_pair("port", port)}) {
            Value value = Object();
            Add(value, "default", variable.second);
            Add(variables, variable.first, std::move(value));
        }
        Value server = Object();
        Add(server, "url", url);
        Add(server, "description", description);
        Add(server, "variables", std::move(variables));
        Value servers = Array();
        Push(servers, std::move(server));
        return servers;
    }

    void Tags(const std::vector<catalogue::Observed>& all)
    {
        Value tags = Array();
        std::set<std::string> seen;
        for (const catalogue::Observed& observed : all) {
            if (seen.insert(observed.function->Module()).second) {
                Value tag = Object();
                Add(tag, "name", observed.function->Module());
                Add(tag, "description", "Functions of the headers in nexwire/" + observed.function->Module());
                Push(tags, std::move(tag));
            }
        }
        Add(document_, "tags", std::move(tags));
    }

    void Paths(const std::vector<catalogue::Observed>& all)
    {
        // In the order of the catalogue; the first function names the identifiers.
        std::vector<std::string> order;
        std::map<std::string, std::map<std::string, Group>> byPath;
        for (const catalogue::Observed& observed : all) {
            const std::string bare = WithoutNames(observed.path);
            if (byPath.find(bare) == byPath.end()) {
                order.push_back(bare);
            }
            byPath[bare][catalogue::LowerCase(VerbOf(observed.request.method))].push_back(&observed);
        }
        Value paths = Object();
        for (const std::string& bare : order) {
            Value item = Object();
            const std::map<std::string, Group>& verbs = byPath[bare];
            const catalogue::Observed& first = *verbs.begin()->second.front();
            if (first.direct) {
                Add(item, "servers", Server("http://{host}:{port}", "The video wall service", "127.0.0.1", "8090"));
            }
            const std::vector<std::string> names = ParametersOf(first.path);
            if (!names.empty()) {
                Add(item, "parameters", PathParameters(names, verbs));
            }
            for (const auto& verb : verbs) {
                Add(item, verb.first, Operation(verb.second));
            }
            Add(paths, first.path, std::move(item));
        }
        Add(document_, "paths", std::move(paths));
    }

    Value PathParameters(const std::vector<std::string>& names, const std::map<std::string, Group>& verbs)
    {
        Value parameters = Array();
        for (const std::string& name : names) {
            std::string type = "string";
            for (const Argument& argument : verbs.begin()->second.front()->function->Arguments()) {
                if (argument.name == name && argument.type->shape == Shape::Integer) {
                    type = "integer";
                }
            }
            Value parameter = Object();
            Add(parameter, "name", name);
            Add(parameter, "in", "path");
            Add(parameter, "required", Value(true));
            Add(parameter, "schema", OfType(type));
            Push(parameters, std::move(parameter));
        }
        return parameters;
    }

    std::string Told(const catalogue::Observed& observed)
    {
        const catalogue::FunctionDoc doc = catalogue::DocOfFunction(*observed.function);
        return doc.text.empty() ? catalogue::DocOfClass(observed.function->ClassName()) : doc.text;
    }

    std::string FirstSentence(const std::string& text)
    {
        const std::size_t end = text.find_first_of(".\n");
        return text.substr(0, end);
    }

    /// Functions of one operation, each with what it is for.
    std::string Description(const Group& group)
    {
        std::string text;
        if (!group.front()->passThrough) {
            for (const catalogue::Observed* observed : group) {
                const std::string told = Told(*observed);
                text += (text.empty() ? "" : "\n\n") + std::string("`") + observed->name + "`" +
                        (told.empty() ? "" : ": " + told);
            }
            return text;
        }
        text = "Relays a command to the device. `inBuffer` and `outBuffer` carry JSON as text.\n\n"
               "| command | condition | function | inBuffer | outBuffer |\n|---|---|---|---|---|";
        for (const catalogue::Observed* observed : group) {
            const bool given = !observed->deviceInput.empty();
            text += "\n| " + (observed->command == 0 ? "the caller's" : std::to_string(observed->command)) + " | " +
                    observed->condition + " | `" + observed->name + "` | " +
                    (given ? Link(observed->inputStructure) : "") + " | " +
                    (given || observed->command == 0 ? "" : Link(observed->outputStructure)) + " |";
        }
        return text;
    }

    std::string Link(const std::string& structure)
    {
        if (!structure.empty()) {
            used_.insert(structure);
        }
        return structure;
    }

    Value Operation(const Group& group)
    {
        const catalogue::Observed& first = *group.front();
        Value operation = Object();
        Add(operation, "operationId", OperationId(first));
        const std::string summary = first.passThrough ? "Command to a device" : FirstSentence(Told(first));
        Add(operation, "summary", summary.empty() ? first.name : summary);
        Add(operation, "description", Description(group));
        Value tags = Array();
        std::set<std::string> modules;
        Value functions = Array();
        for (const catalogue::Observed* observed : group) {
            if (modules.insert(observed->function->Module()).second) {
                Push(tags, Text(observed->function->Module()));
            }
            Push(functions, Text(observed->name));
        }
        Add(operation, "tags", std::move(tags));
        if (!first.direct) {
            Add(operation, "x-nexwire-method-code", Value(first.request.method));
            Add(operation, "x-nexwire-timeout-ms", Value(first.request.timeoutMs));
        }
        Add(operation, "x-nexwire-functions", std::move(functions));
        Value headers = Headers(group);
        if (!headers.Empty()) {
            Add(operation, "parameters", std::move(headers));
        }
        const bool anyBody = std::any_of(group.begin(), group.end(),
                                         [](const catalogue::Observed* each) { return !each->request.body.empty(); });
        if (anyBody) {
            Add(operation, "requestBody", Body(group));
        }
        Value responses = Object();
        Add(responses, "200", Response(group));
        if (!first.direct) {
            Add(responses, "4XX", Json(R"({"$ref": "#/components/responses/Refused"})"));
        }
        Add(operation, "responses", std::move(responses));
        return operation;
    }

    /// Header fields that every transport sends by itself are not a parameter of anything.
    Value Headers(const Group& group)
    {
        Value headers = Array();
        std::set<std::string> seen;
        for (const catalogue::Observed* observed : group) {
            for (const auto& header : observed->request.headers) {
                const std::string lower = catalogue::LowerCase(header.first);
                if (lower == "accept" || lower == "content-type" || lower == "authorization" ||
                    !seen.insert(lower).second) {
                    continue;
                }
                Value parameter = Object();
                Add(parameter, "name", header.first);
                Add(parameter, "in", "header");
                Value schema = OfType("string");
                if (header.second.find('{') == std::string::npos) {
                    Value examples = Array();
                    Push(examples, Text(header.second));
                    Add(schema, "examples", std::move(examples));
                }
                Add(parameter, "schema", std::move(schema));
                Push(headers, std::move(parameter));
            }
        }
        return headers;
    }

    /// The schema of what a function was seen to send or to read; members that its record has, too, are told as there.
    Value ShownSchema(const Value& shown, const std::string& record)
    {
        if (shown.IsArray()) {
            Value list = OfType("array");
            Add(list, "items", shown.Empty() ? Object() : ShownSchema(shown[0], record));
            return list;
        }
        if (!shown.IsObject()) {
            return OfType(shown.IsString()  ? "string"
                          : shown.IsBool()  ? "boolean"
                          : shown.IsInt64() ? "integer"
                                            : "number");
        }
        const catalogue::StructureView view = catalogue::ViewOf(record);
        Value properties = Object();
        for (const auto& member : shown.GetObject()) {
            const std::string key = member.name.GetString();
            const auto known = std::find_if(view.members.begin(), view.members.end(), [&](const auto& each) {
                return each.key == key && (each.list || !member.value.IsArray()) &&
                       each.structure.empty() != HoldsObjects(member.value);
            });
            // Of a record inside, too, only what was seen: each operation has its own part of it.
            Add(properties, key,
                known == view.members.end() ? ShownSchema(member.value, record)
                : known->structure.empty()  ? MemberSchema(*known)
                                            : ShownSchema(member.value, known->structure));
        }
        Value schema = OfType("object");
        Add(schema, "properties", std::move(properties));
        return schema;
    }

    static bool HoldsObjects(const Value& value)
    {
        return value.IsObject() || (value.IsArray() && !value.Empty() && value[0].IsObject());
    }

    /// Changes what a comment does not allow, such as the defaults of members that must be given.
    void Fit(Value& value, const catalogue::MemberView& member)
    {
        const catalogue::Limits& limits = *member.limits;
        if (value.IsArray()) {
            const auto wanted = static_cast<rapidjson::SizeType>(limits.minItems.set ? limits.minItems.value : 0);
            while (member.structure.empty() && value.Size() < wanted) {
                Push(value, member.kind == core::Kind::TextList ? Text("") : Value(0));
            }
            for (Value& element : value.GetArray()) {
                Fit(element, member);
            }
        } else if (value.IsObject()) {
            Fit(value, member.structure);
        } else if (value.IsString()) {
            const std::string text = value.GetString();
            const auto is = [&](const catalogue::Choice& choice) { return text == choice.value; };
            if (limits.closed && std::none_of(limits.values.begin(), limits.values.end(), is) &&
                !(text.empty() && limits.empty)) {
                const bool first = limits.values.data[0].value[0] != '\0' || limits.values.count == 1;
                value = Text(limits.values.data[first ? 0 : 1].value);
            } else if (limits.maxLength.set && text.size() > static_cast<std::size_t>(limits.maxLength.value)) {
                value = Text(text.substr(0, static_cast<std::size_t>(limits.maxLength.value)));
            } else if (limits.minLength.set && text.size() < static_cast<std::size_t>(limits.minLength.value) &&
                       !(text.empty() && limits.empty)) {
                value = Text(std::string(static_cast<std::size_t>(limits.minLength.value), '1'));
            }
        } else if (value.IsInt64()) {
            const std::int64_t number = value.GetInt64();
            const auto is = [&](const catalogue::Choice& choice) { return std::to_string(number) == choice.value; };
            const bool also = std::find(limits.also.begin(), limits.also.end(), number) != limits.also.end();
            if (limits.closed && std::none_of(limits.values.begin(), limits.values.end(), is)) {
                value = Value(static_cast<std::int64_t>(std::stoll(limits.values.data[0].value)));
            } else if (!also && limits.minimum.set && number < limits.minimum.value) {
                value = Value(limits.minimum.value);
            } else if (!also && limits.maximum.set && number > limits.maximum.value) {
                value = Value(limits.maximum.value);
            }
        }
    }
    void Fit(Value& value, const std::string& structure)
    {
        if (!value.IsObject()) {
            return;
        }
        for (const catalogue::MemberView& member : catalogue::ViewOf(structure).members) {
            const auto found = value.FindMember(member.key.c_str());
            if (found != value.MemberEnd()) {
                Fit(found->value, member);
            }
        }
    }
    Value ExampleOf(const catalogue::Observed& observed, const std::string& structure)
    {
        Value example = Json(Filled(observed.request.body, structure));
        const std::string root = observed.direct ? "" : catalogue::ViewOf(structure).rootName;
        const auto inside = root.empty() ? example.MemberEnd() : example.FindMember(root.c_str());
        if (observed.direct) {
            Fit(example, structure);
        } else if (inside != example.MemberEnd()) {
            Fit(inside->value, structure);
        }
        return example;
    }

    /// Gives texts that are empty something to say, and device texts theirs.
    void Fill(Value& value, const std::string& outBuffer)
    {
        if (value.IsString() && value.GetStringLength() == 0) {
            value = Text("text");
        } else if (value.IsArray()) {
            for (Value& element : value.GetArray()) {
                Fill(element, outBuffer);
            }
        } else if (value.IsObject()) {
            for (auto& member : value.GetObject()) {
                const std::string key = member.name.GetString();
                if (key == "outBuffer") {
                    member.value = Text(outBuffer);
                } else if (key != "outBufferEncoding") { // Empty for plain text.
                    Fill(member.value, outBuffer);
                }
            }
        }
    }

    /// A structure with a value for each member.
    Value FilledSample(const std::string& structure, const std::string& outBuffer = "")
    {
        Value sample = Json(Sample(structure));
        Fill(sample, outBuffer);
        Fit(sample, structure);
        return sample;
    }

    /// An answer of a device as the platform hands it on.
    Value RelayedExample(const catalogue::Observed& observed)
    {
        Value device = FilledSample(observed.outputStructure);
        const std::string root = catalogue::ViewOf(observed.outputStructure).rootName;
        if (!root.empty()) {
            Value inside = Object();
            Add(inside, root, std::move(device));
            device = std::move(inside);
        }
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        device.Accept(writer);
        Value envelope = Json(R"({"code": "0-0", "msg": ""})");
        Add(envelope, "data", FilledSample(RelayOf(observed), buffer.GetString()));
        Value example = Object();
        Add(example, "summary", "Command " + std::to_string(observed.command) + ", " + observed.name);
        Add(example, "value", std::move(envelope));
        return example;
    }

    static std::string RelayOf(const catalogue::Observed& observed)
    {
        return observed.path.find("/batch") != std::string::npos ? "BatchPassThroughRspData" : "DagPassThroughRspData";
    }

    Value BodySchema(const catalogue::Observed& observed)
    {
        if (observed.direct) {
            return ShownSchema(Json(observed.request.body), observed.inputStructure);
        }
        if (observed.bodyStructure.empty()) {
            return OfType("object");
        }
        const std::string root = catalogue::ViewOf(observed.bodyStructure).rootName;
        Value properties = Object();
        Add(properties, root, Reference(observed.bodyStructure));
        Value required = Array();
        Push(required, Text(root));
        Value schema = OfType("object");
        Add(schema, "required", std::move(required));
        Add(schema, "properties", std::move(properties));
        return schema;
    }

    /// The parts of an upload by name.
    Value PartsSchema(const std::string& body)
    {
        const std::string mark = "; name=\"";
        Value properties = Object();
        for (std::size_t at = body.find(mark); at != std::string::npos; at = body.find(mark, at)) {
            at += mark.size();
            Add(properties, body.substr(at, body.find('"', at) - at), OfType("string"));
        }
        Value schema = OfType("object");
        Add(schema, "properties", std::move(properties));
        return schema;
    }

    /// The structures that travel as JSON text inside a relayed command.
    template <class Choose>
    void AddBuffer(Value& media, const char* key, const Group& group, Choose choose)
    {
        std::set<std::string> names;
        for (const catalogue::Observed* observed : group) {
            const std::string name = observed->passThrough ? choose(*observed) : "";
            if (!name.empty()) {
                names.insert(name);
            }
        }
        std::vector<Value> schemas;
        for (const std::string& name : names) {
            schemas.push_back(Reference(name));
        }
        if (!schemas.empty()) {
            Add(media, key, AnyOf(std::move(schemas)));
        }
    }

    Value Body(const Group& group)
    {
        std::map<std::string, std::vector<Value>> schemas;
        std::map<std::string, Value> examples;
        std::set<std::string> seen;
        bool always = true;
        for (const catalogue::Observed* observed : group) {
            if (observed->request.body.empty()) {
                always = false;
                continue;
            }
            const auto declared = observed->request.params.find("Content-Type");
            const bool json = declared == observed->request.params.end() && IsJson(observed->request.body);
            const std::string type = json                                         ? "application/json"
                                     : declared == observed->request.params.end() ? "application/octet-stream"
                                                                                  : declared->second;
            const std::string mediaType = type.substr(0, type.find(';'));
            const std::string structure = observed->direct ? observed->inputStructure : observed->bodyStructure;
            if (seen.insert(mediaType + " " + structure).second) {
                schemas[mediaType].push_back(json                                 ? BodySchema(*observed)
                                             : mediaType == "multipart/form-data" ? PartsSchema(observed->request.body)
                                                                                  : OfType("string"));
            }
            if (json) {
                Value example = Object();
                Add(example, "summary",
                    observed->command == 0 ? observed->name
                                           : "Command " + std::to_string(observed->command) + ", " + observed->name);
                Add(example, "value", ExampleOf(*observed, structure));
                Value& all = examples.emplace(mediaType, Object()).first->second;
                Add(all, OperationId(*observed), std::move(example));
            }
        }
        Value content = Object();
        for (auto& schema : schemas) {
            Value media = Object();
            Add(media, "schema", AnyOf(std::move(schema.second)));
            AddBuffer(media, "x-nexwire-inBuffer", group, [](const catalogue::Observed& observed) {
                return observed.deviceInput.empty() ? std::string() : observed.inputStructure;
            });
            AddBuffer(media, "x-nexwire-condBuffer", group, [](const catalogue::Observed& observed) {
                return IsJson(observed.condition) && observed.deviceInput.empty() ? observed.inputStructure
                                                                                  : std::string();
            });
            const auto example = examples.find(schema.first);
            if (example != examples.end()) {
                Add(media, "examples", std::move(example->second));
            }
            Add(content, schema.first, std::move(media));
        }
        Value body = Object();
        Add(body, "required", Value(always));
        Add(body, "content", std::move(content));
        return body;
    }

    /// What "data" holds.
    Value DataSchema(const catalogue::Observed& observed)
    {
        if (observed.passThrough) {
            return Reference(RelayOf(observed));
        }
        if (observed.direct) {
            return ShownSchema(Json(observed.wallData), observed.outputStructure);
        }
        return Reference(DataOf(observed));
    }

    /// What "data" is read into. A function that reads its answer by other means has its result's shape.
    static std::string DataOf(const catalogue::Observed& observed)
    {
        const bool own = observed.dataStructure.empty() && observed.handsOut.empty() && !observed.outputIsList;
        return own ? observed.outputStructure : observed.dataStructure;
    }

    static bool ReadsData(const catalogue::Observed& observed)
    {
        return observed.direct ? observed.wallData != "{}" : observed.passThrough || !DataOf(observed).empty();
    }

    /// Whether the body is what a function hands out, whatever it is: pictures and files. An "answer" is an envelope.
    static bool HandsOutBytes(const catalogue::Observed& observed)
    {
        return !observed.handsOut.empty() && observed.handsOut != "answer";
    }

    Value Response(const Group& group)
    {
        std::vector<Value> data;
        std::set<std::string> seen;
        bool needed = true;
        for (const catalogue::Observed* observed : group) {
            if (!ReadsData(*observed)) {
                needed = false;
                continue;
            }
            needed = needed && observed->needsData;
            const std::string key = observed->passThrough ? WithoutNames(observed->path)
                                    : observed->direct    ? observed->wallData
                                                          : DataOf(*observed);
            if (seen.insert(key).second) {
                data.push_back(DataSchema(*observed));
            }
        }
        const bool direct = group.front()->direct;
        const bool read = !data.empty();
        Value own = OfType("object");
        if (read) {
            Value properties = Object();
            Add(properties, "data", AnyOf(std::move(data)));
            Add(own, "properties", std::move(properties));
            if (needed) {
                Add(own, "required", Json(R"(["data"])"));
            }
        }
        Value all = Array();
        Value envelope = Object();
        Add(envelope, "$ref", std::string(kSchemas) + (direct ? "VideoWallEnvelope" : "Envelope"));
        Push(all, std::move(envelope));
        if (read) {
            Push(all, std::move(own));
        }
        Value schema = Object();
        Add(schema, "allOf", std::move(all));
        Value media = Object();
        Add(media, "schema", std::move(schema));
        AddBuffer(media, "x-nexwire-outBuffer", group,
                  [](const catalogue::Observed& observed) { return observed.outputStructure; });
        Value examples = Object();
        for (const catalogue::Observed* observed : group) {
            if (observed->passThrough && !observed->outputStructure.empty()) {
                Add(examples, OperationId(*observed), RelayedExample(*observed));
            }
        }
        if (!examples.ObjectEmpty()) {
            Add(media, "examples", std::move(examples));
        }
        Value content = Object();
        const bool bytes = std::all_of(group.begin(), group.end(),
                                       [](const catalogue::Observed* observed) { return HandsOutBytes(*observed); });
        Add(content, bytes ? "application/octet-stream" : "application/json", bytes ? Object() : std::move(media));
        Value response = Object();
        Add(response, "description", bytes ? "What was asked for, as it is" : "The envelope, for failures, too");
        Add(response, "content", std::move(content));
        return response;
    }

    void AddBound(Value& schema, const char* key, const catalogue::Bound& bound)
    {
        if (bound.set) {
            Add(schema, key, Value(bound.value));
        }
    }

    /// Adds a schema beside another that may hold instead.
    void AddInstead(Value& schema, Value first, Value second)
    {
        Value any = Array();
        Push(any, std::move(first));
        Push(any, std::move(second));
        Add(schema, "anyOf", std::move(any));
    }

    /// What the comment says about the values of a plain member.
    void AddLimits(Value& schema, const catalogue::Limits& limits)
    {
        Value values = Array();
        bool empty = limits.closed && limits.empty;
        for (const catalogue::Choice& choice : limits.values) {
            if (*choice.value == '\0') {
                empty = true;
                continue;
            }
            Push(values,
                 limits.numbers ? Value(static_cast<std::int64_t>(std::stoll(choice.value))) : Text(choice.value));
        }
        // Last: who makes an answer of the document takes the first.
        if (empty) {
            Push(values, Text(""));
        }
        if (!values.Empty()) {
            Add(schema, limits.closed ? "enum" : "examples", std::move(values));
        }
        Value bounds = Object();
        AddBound(bounds, "minimum", limits.minimum);
        AddBound(bounds, "maximum", limits.maximum);
        AddBound(bounds, "minLength", limits.minLength);
        AddBound(bounds, "maxLength", limits.maxLength);
        Value instead = Array();
        for (const std::int64_t number : limits.also) {
            Push(instead, Value(number));
        }
        if (limits.empty && limits.minLength.set) {
            Push(instead, Text(""));
        }
        if (instead.Empty()) {
            for (auto& bound : bounds.GetObject()) {
                Add(schema, bound.name.GetString(), std::move(bound.value));
            }
        } else {
            Value other = Object();
            Add(other, "enum", std::move(instead));
            AddInstead(schema, std::move(bounds), std::move(other));
        }
        if (limits.unit != nullptr && *limits.unit != '\0') {
            Add(schema, "x-nexwire-unit", Text(limits.unit));
        }
    }

    Value MemberSchema(const catalogue::MemberView& member)
    {
        Value element;
        if (!member.structure.empty()) {
            element = Reference(member.structure);
        } else if (member.type == "text" || member.type == "list of texts") {
            element = OfType("string");
        } else if (member.type == "true or false") {
            element = OfType("boolean");
        } else if (member.type == "number") {
            element = OfType("number");
        } else {
            element = OfType("integer");
            Add(element, "format", member.type == "integer of 64 bits" ? "int64" : "int32");
        }
        const catalogue::Limits& limits = *member.limits;
        if (member.structure.empty()) {
            AddLimits(element, limits);
        }
        if (member.list) {
            Value list = OfType("array");
            Add(list, "items", std::move(element));
            AddBound(list, "minItems", limits.minItems);
            AddBound(list, "maxItems", limits.maxItems);
            element = std::move(list);
        }
        if (limits.readOnly) {
            Add(element, "readOnly", Value(true));
        }
        if (!member.doc.empty()) {
            Add(element, "description", member.doc);
        }
        return element;
    }

    /// Structures that no operation holds: of functions that send nothing or leave one out, and those for functions
    /// that take one of the caller's choice.
    void Further()
    {
        const std::vector<std::string> held =
            catalogue::Reachable(std::vector<std::string>(used_.begin(), used_.end()));
        std::set<std::string> seen(held.begin(), held.end());
        const auto list = [&](const std::vector<std::string>& names) {
            Value references = Array();
            for (const std::string& name : catalogue::Reachable(names)) {
                if (seen.insert(name).second) {
                    Push(references, Reference(name));
                }
            }
            return references;
        };
        Value further = Object();
        for (const catalogue::Function& function : catalogue::All()) {
            std::vector<std::string> names;
            for (const Argument& argument : function.Arguments()) {
                if (argument.type->fields() != nullptr) {
                    names.push_back(argument.type->name());
                }
            }
            Value references = list(names);
            if (!references.Empty()) {
                Add(further, catalogue::UniqueName(function), std::move(references));
            }
        }
        std::vector<std::string> rest;
        for (const catalogue::StructureInfo& structure : catalogue::Structures()) {
            rest.push_back(structure.name);
        }
        Add(further, "any", list(rest));
        Add(document_, "x-nexwire-further-structures", std::move(further));
    }

    void Components()
    {
        Value schemas = Object();
        Add(schemas, "Envelope", Json(R"({
            "type": "object",
            "description": "What every answer of the platform is.",
            "required": ["code"],
            "properties": {
                "code": {"type": "string", "pattern": "^-?[0-9]+--?[0-9]+$", "examples": ["0-0"],
                         "description": "Category and number joined by a hyphen; number 0 is success."},
                "msg": {"type": "string", "description": "Text for the user."},
                "data": {"type": "object", "description": "The result; may be missing."}
            }})"));
        Add(schemas, "VideoWallEnvelope", Json(R"({
            "type": "object",
            "description": "What every answer of the video wall service is.",
            "required": ["code"],
            "properties": {
                "code": {"type": "integer", "format": "int32", "examples": [0], "description": "0 for success."},
                "module": {"type": "integer", "format": "int32", "examples": [0],
                           "description": "Part of the service that answers."},
                "msg": {"type": "string", "description": "Text for the user."},
                "data": {"description": "The result."}
            }})"));
        for (const catalogue::StructureInfo& structure : catalogue::Structures()) {
            used_.insert(structure.name);
        }
        const std::vector<std::string> names =
            catalogue::Reachable(std::vector<std::string>(used_.begin(), used_.end()));
        for (const std::string& name : std::set<std::string>(names.begin(), names.end())) {
            const catalogue::StructureView view = catalogue::ViewOf(name);
            Value schema = OfType("object");
            if (!view.doc.empty()) {
                Add(schema, "description", view.doc);
            }
            Value properties = Object();
            Value required = Array();
            for (const catalogue::MemberView& member : view.members) {
                Add(properties, member.key, MemberSchema(member));
                if (member.limits->required) {
                    Push(required, Text(member.key));
                }
            }
            if (!view.members.empty()) {
                Add(schema, "properties", std::move(properties));
            }
            if (!required.Empty()) {
                Add(schema, "required", std::move(required));
            }
            if (!view.rootName.empty()) {
                Add(schema, "x-nexwire-root-name", view.rootName);
            }
            Add(schemas, SchemaOf(name), std::move(schema));
        }
        Value components = Object();
        Add(components, "schemas", std::move(schemas));
        Add(components, "responses", Json(R"({"Refused": {
            "description": "The server itself refuses; the library reads the envelope all the same.",
            "content": {"application/json": {"schema": {"$ref": "#/components/schemas/Envelope"}}}}})"));
        Add(components, "securitySchemes", Json(R"({"credentials": {
            "type": "apiKey", "in": "header", "name": "Authorization",
            "description": "The library adds none: they are fields of the host's transport."}})"));
        Add(document_, "components", std::move(components));
    }

    rapidjson::Document document_;
    std::set<std::string> used_;
};

} // namespace

std::string OpenApiDocument()
{
    return Writer().Document();
}

} // namespace nexwire::tools

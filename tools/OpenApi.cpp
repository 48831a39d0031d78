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
#include "nexwire/host/HttpRequestExecutor.h"
#include "tools/Example.h"
#include "tools/OpenApiSchemas.h"
#include "tools/Verbs.h"

namespace nexwire::tools {
namespace {

using catalogue::Argument;
using catalogue::Shape;
using rapidjson::Value;

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

class Writer : SchemaWriter {
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
};

} // namespace

std::string OpenApiDocument()
{
    return Writer().Document();
}

} // namespace nexwire::tools

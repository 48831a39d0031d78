// Writes the wire as a document, see catalogue/README.md.
//
//   nexwire_write_wire FILE

#include <fstream>
#include <iostream>
#include <set>
#include <string>

#include <keel/Log.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "catalogue/Comments.h"
#include "catalogue/Find.h"
#include "catalogue/Observed.h"
#include "catalogue/Structures.h"
#include "nexwire/ParseJSONUtil.h"
#include "nexwire/host/HttpRequestExecutor.h"

namespace nexwire::catalogue {
namespace {

class Json {
public:
    Json() : writer_(buffer_) {}

    rapidjson::Writer<rapidjson::StringBuffer>& operator*() { return writer_; }
    void Key(const char* key) { writer_.Key(key); }
    void Text(const std::string& text) { writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size())); }
    /// Members that are empty, zero or false are left out.
    void Member(const char* key, const std::string& text)
    {
        if (!text.empty()) {
            Key(key);
            Text(text);
        }
    }
    void Member(const char* key, const char* text) { Member(key, std::string(text)); }
    void Member(const char* key, std::int64_t number)
    {
        if (number != 0) {
            Key(key);
            writer_.Int64(number);
        }
    }
    void Member(const char* key, int number) { Member(key, static_cast<std::int64_t>(number)); }
    void Member(const char* key, bool flag)
    {
        if (flag) {
            Key(key);
            writer_.Bool(true);
        }
    }
    void Member(const char* key, const Bound& bound)
    {
        if (bound.set) {
            Key(key);
            writer_.Int64(bound.value);
        }
    }
    void Member(const char* key, const rapidjson::Value& value)
    {
        Key(key);
        value.Accept(writer_);
    }
    void Member(const char* key, const std::vector<std::string>& texts)
    {
        if (!texts.empty()) {
            Key(key);
            writer_.StartArray();
            for (const std::string& text : texts) {
                Text(text);
            }
            writer_.EndArray();
        }
    }
    void Member(const char* key, const std::map<std::string, std::string>& texts)
    {
        if (!texts.empty()) {
            Key(key);
            writer_.StartObject();
            for (const auto& text : texts) {
                Key(text.first.c_str());
                Text(text.second);
            }
            writer_.EndObject();
        }
    }
    /// Begins a new line, for whoever searches in the file.
    void Line() { buffer_.Put('\n'); }
    std::string Finished() const { return std::string(buffer_.GetString(), buffer_.GetSize()) + "\n"; }

private:
    rapidjson::StringBuffer buffer_;
    rapidjson::Writer<rapidjson::StringBuffer> writer_;
};

std::string VerbOf(int method)
{
    static const host::HttpExecutorOptions options;
    const auto verb = options.verbs.find(method);
    return verb == options.verbs.end() ? "" : verb->second;
}

void WriteArguments(Json& json, const Function& function)
{
    json.Key("arguments");
    (*json).StartArray();
    for (const Argument& argument : function.Arguments()) {
        (*json).StartObject();
        json.Member("name", argument.name);
        json.Member("type", Spelled(*argument.type));
        if (argument.type->IsStructure()) {
            json.Member("structure", argument.type->name());
            json.Member("list", argument.type->IsList());
        }
        json.Member("input", argument.input());
        json.Member("output", argument.output);
        (*json).EndObject();
    }
    (*json).EndArray();
}

void WriteFunction(Json& json, const Observed& observed)
{
    const Function& function = *observed.function;
    (*json).StartObject();
    json.Member("module", function.Module());
    json.Member("class", function.ClassName());
    json.Member("function", function.Member());
    json.Member("name", observed.name);
    json.Member("signature", DocOfFunction(function).declaration);
    WriteArguments(json, function);
    json.Key("sends");
    (*json).Bool(observed.sent);
    json.Member("result", observed.outputStructure);
    json.Member("resultList", observed.outputIsList);
    if (observed.sent) {
        json.Member("direct", observed.direct);
        json.Key("method");
        (*json).Int(observed.request.method);
        json.Member("verb", VerbOf(observed.request.method));
        json.Member("path", observed.path);
        json.Member("before", observed.before);
        json.Member("timeout", observed.direct ? 0 : observed.request.timeoutMs);
        json.Member("headers", observed.request.headers);
        json.Member("params", observed.request.params);
        json.Member("root", observed.root);
        json.Member("body", observed.direct ? observed.inputStructure : observed.bodyStructure);
        rapidjson::Document sample;
        if (observed.request.body.empty()) {
        } else if (sample.Parse(observed.request.body.c_str()).HasParseError()) {
            json.Member("text", observed.request.body);
        } else {
            json.Member("sample", sample);
        }
        if (observed.passThrough) {
            json.Member("command", observed.command);
            json.Member("route", observed.path.find("/internal/") == std::string::npos ? "external" : "internal");
            json.Member("batch", observed.batch);
            json.Member("condition", observed.condition);
            json.Member("deviceInput", observed.deviceInput.empty() ? "" : observed.inputStructure);
        }
    }
    (*json).EndObject();
}

const char* KindName(core::Kind kind)
{
    static const char* const names[] = {"text",   "int",      "int64",   "real",      "bool",
                                        "struct", "textList", "intList", "structList"};
    return names[static_cast<std::size_t>(kind)];
}

bool IsNothing(const rapidjson::Value& value)
{
    return value.IsNull() || value.IsFalse() || value.IsObject() || (value.IsNumber() && value.GetDouble() == 0) ||
           (value.IsString() && value.GetStringLength() == 0) || (value.IsArray() && value.Empty());
}

void WriteChoice(Json& json, const Limits& limits, const Choice& choice)
{
    if (limits.numbers) {
        (*json).Int64(std::stoll(choice.value));
    } else {
        json.Text(choice.value);
    }
}

void WriteLimits(Json& json, const Limits& limits)
{
    if (limits.values.count > 0) {
        json.Key(limits.closed ? "values" : "examples");
        (*json).StartArray();
        for (const Choice& choice : limits.values) {
            if (limits.closed) {
                (*json).StartObject();
                json.Key("value");
                WriteChoice(json, limits, choice);
                json.Member("means", choice.means);
                (*json).EndObject();
            } else {
                WriteChoice(json, limits, choice);
            }
        }
        (*json).EndArray();
    }
    json.Member("min", limits.minimum);
    json.Member("max", limits.maximum);
    if (limits.also.count > 0) {
        json.Key("also");
        (*json).StartArray();
        for (const std::int64_t number : limits.also) {
            (*json).Int64(number);
        }
        (*json).EndArray();
    }
    json.Member("minLength", limits.minLength);
    json.Member("maxLength", limits.maxLength);
    json.Member("empty", limits.empty);
    json.Member("minItems", limits.minItems);
    json.Member("maxItems", limits.maxItems);
    json.Member("unit", limits.unit == nullptr ? "" : limits.unit);
    json.Member("required", limits.required);
    json.Member("readOnly", limits.readOnly);
}

void WriteView(Json& json, const StructureView& view, const rapidjson::Value& fresh)
{
    json.Key(view.name.c_str());
    (*json).StartObject();
    json.Member("root", view.rootName);
    json.Key("members");
    (*json).StartArray();
    for (const MemberView& member : view.members) {
        (*json).StartObject();
        json.Member("key", member.key);
        json.Member("kind", KindName(member.kind));
        json.Member("element", member.structure);
        const auto value = fresh.FindMember(member.key.c_str());
        if (value != fresh.MemberEnd() && !IsNothing(value->value)) {
            json.Member("default", value->value);
        }
        WriteLimits(json, *member.limits);
        (*json).EndObject();
    }
    (*json).EndArray();
    (*json).EndObject();
}

/// A new structure or record as it would be sent.
void WriteNamed(Json& json, const std::string& name)
{
    const TypeOps& type = NamedType(name, false);
    void* const value = type.create();
    rapidjson::Document fresh;
    fresh.Parse(type.write(value).c_str());
    type.destroy(value);
    json.Line();
    WriteView(json, ViewOf(name), fresh);
}

std::string Document()
{
    Json json;
    std::vector<std::string> records;
    (*json).StartObject();
    json.Key("functions");
    (*json).StartArray();
    Observer observer;
    for (const Function& function : All()) {
        const Observed observed = observer.Observe(function);
        json.Line();
        WriteFunction(json, observed);
        for (const std::string& name : StructuresOf(observed)) {
            if (FindRecord(name) != nullptr) {
                records.push_back(name);
            }
        }
    }
    (*json).EndArray();
    json.Key("structures");
    (*json).StartObject();
    for (const StructureInfo& structure : Structures()) {
        WriteNamed(json, structure.name);
    }
    (*json).EndObject();
    json.Key("records");
    (*json).StartObject();
    const std::vector<std::string> all = Reachable(records);
    for (const std::string& name : std::set<std::string>(all.begin(), all.end())) {
        WriteNamed(json, name);
    }
    (*json).EndObject();
    (*json).EndObject();
    return json.Finished();
}

} // namespace
} // namespace nexwire::catalogue

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: nexwire_write_wire FILE\n";
        return 2;
    }
    Keel::details::LogConfig quiet;
    quiet.level = Keel::details::LogLevel::Off;
    quiet.console = false;
    Keel::CSingleton<Keel::details::CLog>::Instance().Configure(quiet);
    std::ofstream file(argv[1], std::ios::binary | std::ios::trunc);
    file << nexwire::catalogue::Document();
    file.close();
    if (!file) {
        std::cerr << "cannot write " << argv[1] << "\n";
        return 1;
    }
    return 0;
}

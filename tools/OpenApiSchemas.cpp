#include "tools/OpenApiSchemas.h"

#include <algorithm>

#include "catalogue/Find.h"
#include "catalogue/Structures.h"
#include "tools/Example.h"

namespace nexwire::tools {
namespace {

using catalogue::Argument;
using rapidjson::Value;

/// Name of a structure's schema: the format has no colons in names.
std::string SchemaOf(std::string structure)
{
    const std::size_t colons = structure.find("::");
    return colons == std::string::npos ? structure : structure.replace(colons, 2, ".");
}

} // namespace

Value SchemaWriter::Text(const std::string& text)
{
    return Value(text.c_str(), static_cast<rapidjson::SizeType>(text.size()), document_.GetAllocator());
}

Value SchemaWriter::Object()
{
    return Value(rapidjson::kObjectType);
}

Value SchemaWriter::Array()
{
    return Value(rapidjson::kArrayType);
}

void SchemaWriter::Add(Value& object, const std::string& key, Value value)
{
    object.AddMember(Text(key), value, document_.GetAllocator());
}

void SchemaWriter::Add(Value& object, const std::string& key, const std::string& text)
{
    Add(object, key, Text(text));
}

void SchemaWriter::Push(Value& array, Value value)
{
    array.PushBack(value, document_.GetAllocator());
}

Value SchemaWriter::Json(const std::string& json)
{
    rapidjson::Document parsed(&document_.GetAllocator());
    parsed.Parse(json.c_str());
    Value value;
    value.CopyFrom(parsed, document_.GetAllocator());
    return value;
}

Value SchemaWriter::Reference(const std::string& structure)
{
    used_.insert(structure);
    Value reference = Object();
    Add(reference, "$ref", kSchemas + SchemaOf(structure));
    return reference;
}

Value SchemaWriter::AnyOf(std::vector<Value> schemas)
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

Value SchemaWriter::OfType(const std::string& type)
{
    Value schema = Object();
    Add(schema, "type", type);
    return schema;
}

Value SchemaWriter::ShownSchema(const Value& shown, const std::string& record)
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

bool SchemaWriter::HoldsObjects(const Value& value)
{
    return value.IsObject() || (value.IsArray() && !value.Empty() && value[0].IsObject());
}

void SchemaWriter::Fit(Value& value, const catalogue::MemberView& member)
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

void SchemaWriter::Fit(Value& value, const std::string& structure)
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

void SchemaWriter::Fill(Value& value, const std::string& outBuffer)
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

Value SchemaWriter::FilledSample(const std::string& structure, const std::string& outBuffer)
{
    Value sample = Json(Sample(structure));
    Fill(sample, outBuffer);
    Fit(sample, structure);
    return sample;
}

void SchemaWriter::AddBound(Value& schema, const char* key, const catalogue::Bound& bound)
{
    if (bound.set) {
        Add(schema, key, Value(bound.value));
    }
}

void SchemaWriter::AddInstead(Value& schema, Value first, Value second)
{
    Value any = Array();
    Push(any, std::move(first));
    Push(any, std::move(second));
    Add(schema, "anyOf", std::move(any));
}

void SchemaWriter::AddLimits(Value& schema, const catalogue::Limits& limits)
{
    Value values = Array();
    bool empty = limits.closed && limits.empty;
    for (const catalogue::Choice& choice : limits.values) {
        if (*choice.value == '\0') {
            empty = true;
            continue;
        }
        Push(values, limits.numbers ? Value(static_cast<std::int64_t>(std::stoll(choice.value))) : Text(choice.value));
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

Value SchemaWriter::MemberSchema(const catalogue::MemberView& member)
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

void SchemaWriter::Further()
{
    const std::vector<std::string> held = catalogue::Reachable(std::vector<std::string>(used_.begin(), used_.end()));
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

void SchemaWriter::Components()
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
    const std::vector<std::string> names = catalogue::Reachable(std::vector<std::string>(used_.begin(), used_.end()));
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

} // namespace nexwire::tools

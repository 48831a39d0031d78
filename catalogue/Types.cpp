#include "catalogue/Types.h"

#include <charconv>
#include <mutex>
#include <stdexcept>

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "catalogue/Rows.h"
#include "catalogue/Structures.h"
#include "nexwire/ParseJSONUtil.h"

namespace nexwire::catalogue {
namespace {

constexpr unsigned kParseFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;

std::string TextOf(const rapidjson::Value& value)
{
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize());
}

bool Parse(rapidjson::Document& document, const std::string& text)
{
    return !document.Parse<kParseFlags>(text.data(), text.size()).HasParseError();
}

/// The one member of an object that holds nothing else; null for everything else.
const rapidjson::Value::Member* OnlyMember(const rapidjson::Value& value)
{
    return value.IsObject() && value.MemberCount() == 1 && value.MemberBegin()->value.IsObject() ? &*value.MemberBegin()
                                                                                                 : nullptr;
}

const core::Field* FindField(const core::FieldTable& fields, const char* key)
{
    for (const core::Field& field : fields) {
        if (std::string_view(field.key) == key) {
            return &field;
        }
    }
    return nullptr;
}

std::string Keys(const core::FieldTable& fields)
{
    std::string keys;
    for (const core::Field& field : fields) {
        keys += (keys.empty() ? "" : ", ") + std::string(field.key);
    }
    return keys;
}

bool IsElement(core::Kind kind, const rapidjson::Value& value)
{
    return kind == core::Kind::TextList ? value.IsString() : kind == core::Kind::IntList ? value.IsInt() : true;
}

/// What a value of the kind looks like; empty when `value` is one, as far as it can be seen without its members.
const char* Expected(core::Kind kind, const rapidjson::Value& value)
{
    switch (kind) {
    case core::Kind::Text:
        return value.IsString() ? "" : "a text";
    case core::Kind::Int:
        return value.IsInt() ? "" : "an integer of 32 bits";
    case core::Kind::Int64:
        return value.IsInt64() ? "" : "an integer";
    case core::Kind::Real:
        return value.IsNumber() ? "" : "a number";
    case core::Kind::Bool:
        return value.IsBool() ? "" : "true or false";
    case core::Kind::Struct:
        return value.IsObject() ? "" : "an object";
    case core::Kind::TextList:
    case core::Kind::IntList:
    case core::Kind::StructList:
        break;
    }
    return value.IsArray() ? "" : "a list";
}

/// The first place where `object` is not what the table says, as "'place' ..."; empty when there is none. The library
/// reads a platform's answers leniently; a person's slip should not silently be a default.
std::string Misfit(const core::FieldTable& fields, const rapidjson::Value& object, const std::string& place)
{
    for (const auto& member : object.GetObject()) {
        const std::string at = place + member.name.GetString();
        const core::Field* const field = FindField(fields, member.name.GetString());
        if (field == nullptr) {
            return "'" + at + "' is no member of " + NameOf(fields) + ", which has " +
                   (fields.count == 0 ? "none" : Keys(fields));
        }
        const char* const expected = Expected(field->kind, member.value);
        if (*expected != '\0') {
            return "'" + at + "' must be " + expected;
        }
        std::string inside;
        if (field->kind == core::Kind::Struct) {
            inside = Misfit(*field->ops->fields, member.value, at + ".");
        } else if (member.value.IsArray()) {
            std::size_t index = 0;
            for (const rapidjson::Value& element : member.value.GetArray()) {
                const std::string elementAt = at + "[" + std::to_string(index++) + "]";
                if (field->kind == core::Kind::StructList) {
                    inside = element.IsObject() ? Misfit(*field->ops->fields, element, elementAt + ".")
                                                : "'" + elementAt + "' must be an object";
                } else if (!IsElement(field->kind, element)) {
                    inside = "'" + elementAt + "' must be " +
                             (field->kind == core::Kind::TextList ? "a text" : "an integer of 32 bits");
                }
                if (!inside.empty()) {
                    break;
                }
            }
        }
        if (!inside.empty()) {
            return inside;
        }
    }
    return "";
}

/// The object that holds the members: `document`, or what stands in it under the structure's root name.
const rapidjson::Value& Unwrapped(const rapidjson::Value& document, const core::FieldTable& fields)
{
    const rapidjson::Value::Member* const only = OnlyMember(document);
    const bool wrapped = only != nullptr && fields.rootName != nullptr &&
                         std::string_view(only->name.GetString()) == fields.rootName &&
                         FindField(fields, fields.rootName) == nullptr;
    return wrapped ? only->value : document;
}

// ---- Plain types ----

bool Read(std::string& value, const std::string& text)
{
    value = text;
    return true;
}

template <class Number>
bool ReadNumber(Number& value, const std::string& text)
{
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end;
}
bool Read(int& value, const std::string& text)
{
    return ReadNumber(value, text);
}
bool Read(unsigned int& value, const std::string& text)
{
    return ReadNumber(value, text);
}
bool Read(std::int64_t& value, const std::string& text)
{
    return ReadNumber(value, text);
}
bool Read(std::uint64_t& value, const std::string& text)
{
    return ReadNumber(value, text);
}

bool Read(double& value, const std::string& text)
{
    rapidjson::Document document;
    if (!Parse(document, text) || !document.IsNumber()) {
        return false;
    }
    value = document.GetDouble();
    return true;
}

bool Read(bool& value, const std::string& text)
{
    value = text == "true" || text == "1";
    return value || text == "false" || text == "0";
}

bool ReadElement(std::string& element, const rapidjson::Value& value)
{
    if (value.IsString()) {
        element.assign(value.GetString(), value.GetStringLength());
    }
    return value.IsString();
}

bool ReadElement(int& element, const rapidjson::Value& value)
{
    element = value.IsInt() ? value.GetInt() : 0;
    return value.IsInt();
}

template <class List>
bool ReadElements(List& list, const std::string& text)
{
    rapidjson::Document document;
    if (!Parse(document, text) || !document.IsArray()) {
        return false;
    }
    list.clear();
    for (const rapidjson::Value& each : document.GetArray()) {
        typename List::value_type element;
        if (!ReadElement(element, each)) {
            return false;
        }
        list.insert(list.end(), std::move(element));
    }
    return true;
}
template <class Element>
bool Read(std::vector<Element>& value, const std::string& text)
{
    return ReadElements(value, text);
}
bool Read(std::set<std::string>& value, const std::string& text)
{
    return ReadElements(value, text);
}

bool ReadKey(std::string& key, const std::string& text)
{
    return Read(key, text);
}
bool ReadKey(int& key, const std::string& text)
{
    return Read(key, text);
}

template <class Key, class Value>
bool Read(std::map<Key, Value>& map, const std::string& text)
{
    rapidjson::Document document;
    if (!Parse(document, text) || !document.IsObject()) {
        return false;
    }
    map.clear();
    for (const auto& member : document.GetObject()) {
        Key key{};
        if (!ReadKey(key, member.name.GetString()) || !ReadElement(map[key], member.value)) {
            return false;
        }
    }
    return true;
}

bool Read(std::shared_ptr<int>& value, const std::string& text)
{
    return Read(*value, text);
}

bool ReadStructure(protocol::IJSONStruct& value, const core::FieldTable& fields, const std::string& text)
{
    rapidjson::Document document;
    if (!Parse(document, text) || !document.IsObject()) {
        return false;
    }
    const rapidjson::Value& members = Unwrapped(document, fields);
    return Misfit(fields, members, "").empty() &&
           protocol::ParseJSONText(value, &members == &document ? nullptr : fields.rootName, text);
}

bool Read(AnyStructure& value, const std::string& text)
{
    rapidjson::Document document;
    if (!Parse(document, text)) {
        return false;
    }
    const rapidjson::Value::Member* const only = OnlyMember(document);
    if (only == nullptr) {
        return false;
    }
    auto structure = MakeByRootName(only->name.GetString());
    if (!structure || !ReadStructure(*structure, structure->Fields(), text)) {
        return false;
    }
    value.structure = std::move(structure);
    return true;
}

bool Read(Keel::Error::ErrorCode&, const std::string&)
{
    return false;
}
bool Read(protocol::ReturnData&, const std::string&)
{
    return false;
}

std::string Written(const std::string& value)
{
    return WriteText(value);
}
std::string Written(bool value)
{
    return value ? "true" : "false";
}
std::string Written(int value)
{
    return std::to_string(value);
}
std::string Written(unsigned int value)
{
    return std::to_string(value);
}
std::string Written(std::int64_t value)
{
    return std::to_string(value);
}
std::string Written(std::uint64_t value)
{
    return std::to_string(value);
}
std::string Written(double value)
{
    return TextOf(rapidjson::Value(value));
}
template <class List>
std::string WrittenElements(const List& list)
{
    std::string json = "[";
    for (const auto& element : list) {
        json += (json.size() > 1 ? "," : "") + Written(element);
    }
    return json + "]";
}
template <class Element>
std::string Written(const std::vector<Element>& value)
{
    return WrittenElements(value);
}
std::string Written(const std::set<std::string>& value)
{
    return WrittenElements(value);
}
std::string KeyText(const std::string& key)
{
    return key;
}
std::string KeyText(int key)
{
    return std::to_string(key);
}
template <class Key, class Value>
std::string Written(const std::map<Key, Value>& value)
{
    std::string json = "{";
    for (const auto& entry : value) {
        json += (json.size() > 1 ? "," : "") + WriteText(KeyText(entry.first)) + ":" + Written(entry.second);
    }
    return json + "}";
}
std::string Written(const std::shared_ptr<int>& value)
{
    return Written(*value);
}
std::string Written(const Keel::Error::ErrorCode& value)
{
    return "{\"category\":" + std::to_string(value.category) + ",\"number\":" + std::to_string(value.number) +
           ",\"text\":" + WriteText(value.text) + "}";
}
std::string Written(const protocol::ReturnData& value)
{
    return "{\"code\":\"" + std::to_string(value.code.category) + "-" + std::to_string(value.code.number) +
           "\",\"msg\":" + WriteText(value.msg) +
           (value.data ? ",\"data\":" + protocol::StructureToJSON(*value.data) : std::string()) + "}";
}
std::string Written(const AnyStructure& value)
{
    return value.structure
               ? "{" + WriteText(value.structure->RootName()) + ":" + protocol::StructureToJSON(*value.structure) + "}"
               : "null";
}

template <class T>
class Plain : public TypeOps {
public:
    Plain(Shape of, const char* spelled) : TypeOps(of), spelled_(spelled) {}

    void* create() const override { return new T(); }
    void destroy(void* value) const override { delete static_cast<T*>(value); }
    bool read(void* value, const std::string& text) const override { return Read(*static_cast<T*>(value), text); }
    std::string write(const void* value) const override { return Written(*static_cast<const T*>(value)); }
    std::string name() const override { return spelled_; }

private:
    const char* spelled_;
};

/// A counter is there before the call.
class CounterType : public Plain<std::shared_ptr<int>> {
public:
    using Plain::Plain;
    void* create() const override { return new std::shared_ptr<int>(std::make_shared<int>(0)); }
};

// ---- Structures ----

class StructureType : public TypeOps {
public:
    explicit StructureType(const StructureInfo& structure) : TypeOps(Shape::Structure), structure_(structure) {}

    void* create() const override { return core::Create(fields()->ops); }
    void destroy(void* value) const override { core::Destroy(fields()->ops, value); }
    bool read(void* value, const std::string& text) const override
    {
        return ReadStructure(*core::StructOps::AsStruct(value), *fields(), text);
    }
    std::string write(const void* value) const override
    {
        return protocol::StructureToJSON(*core::StructOps::AsStruct(const_cast<void*>(value)));
    }
    std::string name() const override { return structure_.name; }
    const core::FieldTable* fields() const override { return structure_.fields; }

private:
    const StructureInfo& structure_;
};

class StructureListType : public TypeOps {
public:
    StructureListType(const StructureInfo& structure, const ListType& type)
        : TypeOps(Shape::StructureList), structure_(structure), type_(type), ops_(type.ops)
    {
    }

    void* create() const override { return type_.create(); }
    void destroy(void* value) const override { type_.destroy(value); }
    bool read(void* value, const std::string& text) const override
    {
        rapidjson::Document document;
        if (!Parse(document, text) || !document.IsArray()) {
            return false;
        }
        void* const first = ops_.Renew(value, document.Size());
        std::size_t index = 0;
        for (const rapidjson::Value& element : document.GetArray()) {
            if (!ReadStructure(*ops_.Element(first, index++), *fields(), TextOf(element))) {
                return false;
            }
        }
        return true;
    }
    std::string write(const void* value) const override
    {
        std::string json = "[";
        std::size_t count = 0;
        void* const first = ops_.Look(value, count);
        for (std::size_t i = 0; i < count; ++i) {
            json += (i > 0 ? "," : "") + protocol::StructureToJSON(*ops_.Element(first, i));
        }
        return json + "]";
    }
    std::string name() const override { return structure_.name; }
    const core::FieldTable* fields() const override { return structure_.fields; }

private:
    const StructureInfo& structure_;
    const ListType& type_;
    const core::ListOps& ops_;
};

// ---- Plain records ----

using JsonWriter = rapidjson::Writer<rapidjson::StringBuffer>;

template <class T>
T& At(void* record, const RecordMember& member)
{
    return *static_cast<T*>(static_cast<void*>(static_cast<char*>(record) + member.offset));
}

void WriteRecord(JsonWriter& json, const RecordTable& table, void* record);

void WriteRecordList(JsonWriter& json, const RecordTable& table, const void* list)
{
    json.StartArray();
    for (std::size_t i = 0; i < table.count(list); ++i) {
        WriteRecord(json, table, const_cast<void*>(table.at(list, i)));
    }
    json.EndArray();
}

void WriteString(JsonWriter& json, const std::string& text)
{
    json.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void WriteRecord(JsonWriter& json, const RecordTable& table, void* record)
{
    json.StartObject();
    for (const RecordMember& member : table.members) {
        json.Key(member.name);
        switch (member.kind) {
        case core::Kind::Text:
            WriteString(json, At<std::string>(record, member));
            break;
        case core::Kind::Int:
            json.Int(At<std::int32_t>(record, member));
            break;
        case core::Kind::Int64:
            json.Int64(At<std::int64_t>(record, member));
            break;
        case core::Kind::Real:
            json.Double(At<double>(record, member));
            break;
        case core::Kind::Bool:
            json.Bool(At<bool>(record, member));
            break;
        case core::Kind::TextList:
            json.StartArray();
            for (const std::string& text : At<std::vector<std::string>>(record, member)) {
                WriteString(json, text);
            }
            json.EndArray();
            break;
        case core::Kind::IntList:
            json.StartArray();
            for (const std::int32_t number : At<std::vector<std::int32_t>>(record, member)) {
                json.Int(number);
            }
            json.EndArray();
            break;
        case core::Kind::Struct:
            WriteRecord(json, *FindRecord(member.record), &At<char>(record, member));
            break;
        case core::Kind::StructList:
            WriteRecordList(json, *FindRecord(member.record), &At<char>(record, member));
            break;
        }
    }
    json.EndObject();
}

bool ReadRecord(const RecordTable& table, void* record, const rapidjson::Value& value);

bool ReadRecordList(const RecordTable& table, void* list, const rapidjson::Value& value)
{
    table.clear(list);
    if (!value.IsArray()) {
        return false;
    }
    for (const rapidjson::Value& element : value.GetArray()) {
        if (!ReadRecord(table, table.append(list), element)) {
            return false;
        }
    }
    return true;
}

bool ReadMember(const RecordMember& member, void* record, const rapidjson::Value& value)
{
    if (*Expected(member.kind, value) != '\0') {
        return false;
    }
    switch (member.kind) {
    case core::Kind::Text:
        return ReadElement(At<std::string>(record, member), value);
    case core::Kind::Int:
        At<std::int32_t>(record, member) = value.GetInt();
        return true;
    case core::Kind::Int64:
        At<std::int64_t>(record, member) = value.GetInt64();
        return true;
    case core::Kind::Real:
        At<double>(record, member) = value.GetDouble();
        return true;
    case core::Kind::Bool:
        At<bool>(record, member) = value.GetBool();
        return true;
    case core::Kind::TextList:
        return Read(At<std::vector<std::string>>(record, member), TextOf(value));
    case core::Kind::IntList:
        return Read(At<std::vector<std::int32_t>>(record, member), TextOf(value));
    case core::Kind::Struct:
        return ReadRecord(*FindRecord(member.record), &At<char>(record, member), value);
    case core::Kind::StructList:
        return ReadRecordList(*FindRecord(member.record), &At<char>(record, member), value);
    }
    return false;
}

/// False when a key is not a member or its value has another type.
bool ReadRecord(const RecordTable& table, void* record, const rapidjson::Value& value)
{
    if (!value.IsObject()) {
        return false;
    }
    rapidjson::SizeType known = 0;
    for (const RecordMember& member : table.members) {
        const auto found = value.FindMember(member.name);
        if (found != value.MemberEnd()) {
            ++known;
            if (!ReadMember(member, record, found->value)) {
                return false;
            }
        }
    }
    return known == value.MemberCount();
}

void SampleRecord(const RecordTable& table, void* record)
{
    for (const RecordMember& member : table.members) {
        switch (member.kind) {
        case core::Kind::Text:
            At<std::string>(record, member) = std::string("{") + member.name + "}";
            break;
        case core::Kind::TextList:
            At<std::vector<std::string>>(record, member) = {std::string("{") + member.name + "}"};
            break;
        case core::Kind::IntList:
            At<std::vector<std::int32_t>>(record, member) = {0};
            break;
        case core::Kind::Struct:
            SampleRecord(*FindRecord(member.record), &At<char>(record, member));
            break;
        case core::Kind::StructList: {
            const RecordTable& element = *FindRecord(member.record);
            SampleRecord(element, element.append(&At<char>(record, member)));
            break;
        }
        default:
            break;
        }
    }
}

class RecordType : public TypeOps {
public:
    RecordType(const RecordTable& table, bool list) : TypeOps(list ? Shape::RecordList : Shape::Record), table_(table)
    {
    }

    void* create() const override { return IsList() ? table_.createList() : table_.create(); }
    void destroy(void* value) const override { IsList() ? table_.destroyList(value) : table_.destroy(value); }
    bool read(void* value, const std::string& text) const override
    {
        rapidjson::Document document;
        return Parse(document, text) &&
               (IsList() ? ReadRecordList(table_, value, document) : ReadRecord(table_, value, document));
    }
    std::string write(const void* value) const override
    {
        rapidjson::StringBuffer buffer;
        JsonWriter json(buffer);
        if (IsList()) {
            WriteRecordList(json, table_, value);
        } else {
            WriteRecord(json, table_, const_cast<void*>(value));
        }
        return std::string(buffer.GetString(), buffer.GetSize());
    }
    std::string name() const override { return table_.name; }
    void sample(void* value) const override
    {
        if (!IsList()) {
            SampleRecord(table_, value);
        }
    }

private:
    const RecordTable& table_;
};

std::unique_ptr<TypeOps> MakeNamed(const std::string& name, bool list, const ListType* ops)
{
    const StructureInfo* const structure = FindStructure(name);
    if (structure != nullptr) {
        if (list && ops == nullptr) {
            throw std::logic_error("a list of " + name + " needs what can be done with it");
        }
        return list ? std::unique_ptr<TypeOps>(new StructureListType(*structure, *ops))
                    : std::unique_ptr<TypeOps>(new StructureType(*structure));
    }
    const RecordTable* const record = FindRecord(name);
    if (record == nullptr) {
        throw std::logic_error(name + " has no table of its members");
    }
    return std::make_unique<RecordType>(*record, list);
}

} // namespace

std::string Misfit(const TypeOps& type, const std::string& text)
{
    switch (type.shape) {
    case Shape::Text:
        return "a text";
    case Shape::Integer:
        return type.name() == "int" ? "a decimal integer of 32 bits" : "a decimal integer, " + type.name();
    case Shape::Boolean:
        return "true or false";
    case Shape::Real:
        return "a number";
    case Shape::Counter:
        return "a decimal integer of 32 bits";
    case Shape::ErrorCode:
    case Shape::Envelope:
        return "left out: it is a result";
    case Shape::TextList:
    case Shape::IntegerList:
    case Shape::TextMap:
    case Shape::Structure:
    case Shape::StructureList:
    case Shape::Record:
    case Shape::RecordList:
    case Shape::AnyStructure:
        break;
    }
    const std::string name = type.name();
    const bool list = type.IsList();
    std::string wanted = type.shape == Shape::TextList       ? "a JSON list of texts"
                         : type.shape == Shape::IntegerList  ? "a JSON list of integers of 32 bits"
                         : type.shape == Shape::TextMap      ? "a JSON object, " + name
                         : type.shape == Shape::AnyStructure ? "a JSON object with one structure under its root name"
                         : list                              ? "a JSON list of " + name
                                                             : "a JSON object, " + name;
    rapidjson::Document document;
    if (!Parse(document, text)) {
        return wanted + ": no JSON at byte " + std::to_string(document.GetErrorOffset()) + ", " +
               rapidjson::GetParseError_En(document.GetParseError());
    }
    const core::FieldTable* const fields = type.fields();
    if (fields == nullptr || (list ? !document.IsArray() : !document.IsObject())) {
        return wanted;
    }
    std::string inside;
    if (!list) {
        inside = Misfit(*fields, Unwrapped(document, *fields), "");
    } else {
        std::size_t index = 0;
        for (const rapidjson::Value& element : document.GetArray()) {
            const std::string at = "[" + std::to_string(index++) + "]";
            inside = element.IsObject() ? Misfit(*fields, Unwrapped(element, *fields), at + ".")
                                        : "'" + at + "' must be an object";
            if (!inside.empty()) {
                break;
            }
        }
    }
    return inside.empty() ? wanted : wanted + ": " + inside;
}

#define NEXWIRE_PLAIN_TYPE(shape_, ...)                                                                                \
    template <>                                                                                                        \
    const TypeOps& PlainType<__VA_ARGS__>()                                                                            \
    {                                                                                                                  \
        static const Plain<__VA_ARGS__> type(Shape::shape_, #__VA_ARGS__);                                             \
        return type;                                                                                                   \
    }
NEXWIRE_PLAIN_TYPE(Text, std::string)
NEXWIRE_PLAIN_TYPE(Integer, int)
NEXWIRE_PLAIN_TYPE(Integer, unsigned int)
NEXWIRE_PLAIN_TYPE(Integer, std::int64_t)
NEXWIRE_PLAIN_TYPE(Integer, std::uint64_t)
NEXWIRE_PLAIN_TYPE(Real, double)
NEXWIRE_PLAIN_TYPE(Boolean, bool)
NEXWIRE_PLAIN_TYPE(TextList, std::vector<std::string>)
NEXWIRE_PLAIN_TYPE(TextList, std::set<std::string>)
NEXWIRE_PLAIN_TYPE(IntegerList, std::vector<int>)
NEXWIRE_PLAIN_TYPE(TextMap, std::map<int, std::string>)
NEXWIRE_PLAIN_TYPE(TextMap, std::map<std::string, std::string>)
NEXWIRE_PLAIN_TYPE(TextMap, std::map<std::string, int>)
NEXWIRE_PLAIN_TYPE(ErrorCode, Keel::Error::ErrorCode)
NEXWIRE_PLAIN_TYPE(Envelope, protocol::ReturnData)
#undef NEXWIRE_PLAIN_TYPE

template <>
const TypeOps& PlainType<std::shared_ptr<int>>()
{
    static const CounterType type(Shape::Counter, "std::shared_ptr<int>");
    return type;
}
template <>
const TypeOps& PlainType<AnyStructure>()
{
    static const Plain<AnyStructure> type(Shape::AnyStructure, "void*");
    return type;
}

const RecordTable* FindRecord(const std::string& name)
{
    for (const HeaderRows* header : AllHeaders()) {
        for (const RecordTable& record : header->records) {
            if (name == record.name) {
                return &record;
            }
        }
    }
    return nullptr;
}

const TypeOps& NamedType(const std::string& name, bool list, const ListType* ops)
{
    static std::mutex mutex;
    static std::map<std::pair<std::string, bool>, std::unique_ptr<TypeOps>> types;
    const std::lock_guard<std::mutex> lock(mutex);
    std::unique_ptr<TypeOps>& type = types[{name, list}];
    if (!type) {
        type = MakeNamed(name, list, ops);
    }
    return *type;
}

std::string WriteText(const std::string& value)
{
    return TextOf(rapidjson::Value(rapidjson::StringRef(value.data(), value.size())));
}

} // namespace nexwire::catalogue

#include <cstring>

#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "Peers.h"

namespace bench {
namespace {

class Reader {
public:
    explicit Reader(const rapidjson::Value& object) : object_(object) {}
    bool Good() const { return good_; }

    void operator()(const char* key, std::string& out)
    {
        const rapidjson::Value* const value = Find(key);
        if (value != nullptr && value->IsString()) {
            out.assign(value->GetString(), value->GetStringLength());
        } else {
            good_ = false;
        }
    }
    void operator()(const char* key, std::int32_t& out)
    {
        const rapidjson::Value* const value = Find(key);
        if (value != nullptr && value->IsInt()) {
            out = value->GetInt();
        } else {
            good_ = false;
        }
    }
    void operator()(const char* key, bool& out)
    {
        const rapidjson::Value* const value = Find(key);
        if (value != nullptr && value->IsBool()) {
            out = value->GetBool();
        } else {
            good_ = false;
        }
    }

private:
    const rapidjson::Value* Find(const char* key) const
    {
        const auto member = object_.FindMember(key);
        return member == object_.MemberEnd() ? nullptr : &member->value;
    }

    const rapidjson::Value& object_;
    bool good_ = true;
};

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

struct MemberWriter {
    Writer& writer;

    void operator()(const char* key, const std::string& value)
    {
        writer.Key(key);
        writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }
    void operator()(const char* key, std::int32_t value)
    {
        writer.Key(key);
        writer.Int(value);
    }
    void operator()(const char* key, bool value)
    {
        writer.Key(key);
        writer.Bool(value);
    }
};

} // namespace

bool ReadWithRapidJson(const std::string& answer, std::vector<PlainPerson>& persons)
{
    rapidjson::Document document;
    document.Parse(answer.data(), answer.size());
    if (document.HasParseError() || std::strcmp(document["code"].GetString(), "0-0") != 0) {
        return false;
    }
    const rapidjson::Value& list = document["data"]["personList"];
    persons.reserve(list.Size());
    for (const rapidjson::Value& element : list.GetArray()) {
        Reader reader(element);
        ForEachMember(persons.emplace_back(), reader);
        if (!reader.Good()) {
            return false;
        }
    }
    return true;
}

std::string WriteWithRapidJson(const std::vector<PlainPerson>& persons)
{
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.SetIndent('\t', 1);
    writer.StartObject();
    writer.Key("personAddParam");
    writer.StartObject();
    writer.Key("personList");
    writer.StartArray();
    for (const PlainPerson& person : persons) {
        writer.StartObject();
        ForEachMember(person, MemberWriter{writer});
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize());
}

} // namespace bench

#include "Client.h"

#include <rapidjson/pointer.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdio>
#include <stdexcept>

namespace test {
namespace {

const rapidjson::Value* Find(const Reply& reply, const std::string& pointer)
{
    return reply.json == nullptr ? nullptr : rapidjson::Pointer(pointer.c_str()).Get(*reply.json);
}

std::string Numbered(const char* prefix, int number)
{
    char text[64];
    std::snprintf(text, sizeof text, "%s%030d", prefix, number);
    return text;
}

} // namespace

std::string Reply::Text(const std::string& pointer) const
{
    const rapidjson::Value* value = Find(*this, pointer);
    return value != nullptr && value->IsString() ? value->GetString() : "(none)";
}

std::int64_t Reply::Int(const std::string& pointer) const
{
    const rapidjson::Value* value = Find(*this, pointer);
    return value != nullptr && value->IsInt64() ? value->GetInt64() : -999;
}

std::size_t Reply::Size(const std::string& pointer) const
{
    const rapidjson::Value* value = Find(*this, pointer);
    return value != nullptr && value->IsArray() ? value->Size() : 999;
}

std::string Reply::Print(const std::string& pointer) const
{
    const rapidjson::Value* value = Find(*this, pointer);
    if (value == nullptr) {
        return {};
    }
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value->Accept(writer);
    return buffer.GetString();
}

std::vector<std::string> Reply::Texts(const std::string& pointer, const std::string& member) const
{
    std::vector<std::string> texts;
    for (std::size_t i = 0; Find(*this, pointer + "/" + std::to_string(i)) != nullptr; ++i) {
        texts.push_back(Text(pointer + "/" + std::to_string(i) + "/" + member));
    }
    return texts;
}

Site::Site(const std::string& databasePath, std::uint64_t bodyLimit)
    : now_(std::make_shared<std::atomic<std::int64_t>>(1704067200000))
{
    nexwire::simulator::Options options;
    options.databasePath = databasePath;
    options.bodyLimit = bodyLimit;
    options.now = [now = now_] { return now->load(); };
    platform_ = std::make_unique<nexwire::simulator::Platform>(options);
    std::string error;
    if (!platform_->Start(error)) {
        throw std::runtime_error(error);
    }
    client_ = std::make_unique<Client>(platform_->Port());
}

Reply Site::Send(const std::string& verb, const std::string& path, const std::string& body)
{
    return client_->Send(verb, "/7730/v1/" + path, body);
}

std::string Device(int number)
{
    return Numbered("AC", number);
}

std::string Person(int number)
{
    return Numbered("9E", number);
}

} // namespace test

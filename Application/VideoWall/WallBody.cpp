#include "Application/VideoWall/WallBody.h"

#include <cstdint>

namespace nexwire::videowall {

bool Key::WriteTo(proto::CRapidJsonProto& body) const
{
    struct Visitor {
        proto::CRapidJsonProto& body;
        const char* path;

        bool operator()(const std::string* text) const { return body.Set(path, *text); }
        bool operator()(const std::string& text) const { return body.Set(path, text); }
        bool operator()(int number) const { return body.Set(path, std::int32_t{number}); }
        bool operator()(bool flag) const { return body.Set(path, flag); }
        bool operator()(const Writer& write) const { return write(body, path); }
    };
    return std::visit(Visitor{body, path_}, value_);
}

Keys Join(Keys first, const Keys& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

bool Answer::Read(const std::string& path, std::string& text, Also also) const
{
    Note(path, core::Kind::Text);
    std::int64_t number = 0;
    if (json_.Get(path, text)) {
        return true;
    }
    if (also != Also::Number || !json_.Get(path, number)) {
        return false;
    }
    text = std::to_string(number);
    return true;
}

bool Answer::Read(const std::string& path, int& number, Also also) const
{
    Note(path, core::Kind::Int);
    std::int32_t value = 0;
    bool flag = false;
    if (json_.Get(path, value)) {
        number = value;
        return true;
    }
    if (also != Also::Bool || !json_.Get(path, flag)) {
        return false;
    }
    number = flag ? 1 : 0;
    return true;
}

bool Answer::Read(const std::string& path, bool& flag, Also) const
{
    Note(path, core::Kind::Bool);
    return json_.Get(path, flag);
}

std::size_t Answer::Size(const std::string& path) const
{
    Note(path, core::Kind::StructList);
    return json_.ArraySize(path);
}

} // namespace nexwire::videowall

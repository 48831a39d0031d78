#include "Client.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <rapidjson/pointer.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdio>
#include <stdexcept>

namespace test {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using asio::ip::tcp;

tcp::endpoint Endpoint(std::uint16_t port)
{
    return {asio::ip::address_v4::loopback(), port};
}

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

class Client::Impl {
public:
    explicit Impl(std::uint16_t port) : socket_(context_) { socket_.connect(Endpoint(port)); }

    Reply Send(const std::string& verb, const std::string& path, const std::string& body)
    {
        http::request<http::string_body> request;
        request.method_string(verb);
        request.target(path);
        request.version(11);
        request.set(http::field::host, "127.0.0.1");
        request.body() = body;
        request.prepare_payload();
        http::write(socket_, request);
        http::response_parser<http::string_body> parser;
        parser.body_limit(256u << 20u);
        parser.skip(verb == "HEAD");
        http::read(socket_, buffer_, parser);
        Reply reply;
        reply.status = parser.get().result_int();
        reply.body = parser.get().body();
        reply.json = std::make_shared<rapidjson::Document>();
        reply.json->Parse(reply.body.c_str(), reply.body.size());
        if (reply.json->HasParseError()) {
            reply.json.reset();
        }
        return reply;
    }

private:
    asio::io_context context_;
    tcp::socket socket_;
    beast::flat_buffer buffer_;
};

Client::Client(std::uint16_t port) : impl_(std::make_unique<Impl>(port)) {}
Client::~Client() = default;

Reply Client::Send(const std::string& verb, const std::string& path, const std::string& body)
{
    return impl_->Send(verb, path, body);
}

std::string SendRaw(std::uint16_t port, const std::string& bytes, bool closeAfter)
{
    asio::io_context context;
    beast::tcp_stream stream(context);
    stream.connect(Endpoint(port));
    beast::error_code error;
    asio::write(stream.socket(), asio::buffer(bytes), error); // The platform may close before it has all.
    if (closeAfter) {
        stream.socket().shutdown(tcp::socket::shutdown_send, error);
    }
    std::string answer;
    stream.expires_after(std::chrono::seconds(2));
    asio::async_read(stream, asio::dynamic_buffer(answer), [](beast::error_code, std::size_t) {});
    context.run();
    return answer;
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

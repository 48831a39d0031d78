#include "src/HttpReader.h"

#include <boost/asio/buffer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/string.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>

#include <optional>

#include <keel/StringUtil.h>

namespace nexwire::simulator {
namespace {

namespace beast = boost::beast;
namespace http = beast::http;

constexpr std::size_t kReadSize = 64u * 1024u;
constexpr std::uint32_t kHeaderLimit = 64u * 1024u;

std::string Text(beast::string_view view)
{
    return {view.data(), view.size()};
}

} // namespace

class HttpReader::Impl {
public:
    std::uint64_t bodyLimit = 0;
    beast::flat_buffer buffer;
    std::optional<http::request_parser<http::string_body>> parser;
    bool headRead = false;
    bool broken = false;
    std::string problem;
};

HttpReader::HttpReader(std::uint64_t bodyLimit) : impl_(std::make_unique<Impl>())
{
    impl_->bodyLimit = bodyLimit;
}

HttpReader::~HttpReader() = default;

void HttpReader::Begin()
{
    impl_->parser.emplace();
    impl_->parser->header_limit(kHeaderLimit);
    impl_->parser->body_limit(impl_->bodyLimit);
    impl_->headRead = false;
}

std::pair<char*, std::size_t> HttpReader::Room()
{
    const boost::asio::mutable_buffer room = impl_->buffer.prepare(kReadSize);
    return {static_cast<char*>(room.data()), room.size()};
}

void HttpReader::Came(std::size_t size)
{
    impl_->buffer.commit(size);
}

HttpReader::State HttpReader::Read()
{
    auto& parser = *impl_->parser;
    for (;;) {
        beast::error_code error;
        if (impl_->buffer.size() > 0) {
            impl_->buffer.consume(parser.put(impl_->buffer.data(), error));
        }
        if (error && error != http::error::need_more) {
            impl_->broken = true;
            impl_->problem = error.message();
            const bool tooLarge = error == http::error::body_limit || error == http::error::header_limit;
            return tooLarge ? State::kTooLarge : State::kMalformed;
        }
        if (parser.is_done()) {
            return State::kWhole;
        }
        if (!parser.is_header_done() || impl_->headRead) {
            return State::kMore;
        }
        impl_->headRead = true;
        parser.eager(true);
        if (beast::iequals(parser.get()[http::field::expect], "100-continue")) {
            return State::kContinues;
        }
    }
}

void HttpReader::Take(Request& request, std::string& target)
{
    request = Request();
    if (impl_->broken) {
        const bool known = impl_->parser->is_header_done();
        request.verb = known ? Text(impl_->parser->get().method_string()) : "-";
        target = known ? Text(impl_->parser->get().target()) : "-";
        return;
    }
    auto& message = impl_->parser->get();
    request.verb = Text(message.method_string());
    target = Text(message.target());
    const std::size_t mark = target.find('?');
    request.path = target.substr(0, mark);
    request.query = mark == std::string::npos ? std::string() : target.substr(mark + 1);
    for (const auto& field : message) {
        request.headers[Keel::StringUtil::LowerCase(Text(field.name_string()))] = Text(field.value());
    }
    request.body = std::move(message.body());
}

bool HttpReader::KeepsAlive() const
{
    return !impl_->broken && impl_->parser->get().keep_alive();
}

const std::string& HttpReader::Problem() const
{
    return impl_->problem;
}

} // namespace nexwire::simulator

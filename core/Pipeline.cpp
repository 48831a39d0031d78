#include "core/Pipeline.h"

#include <keel/Error.h>

#include "core/ConfigManager.h"
#include "core/Serialize.h"
#include "nexwire/LastExchange.h"

namespace nexwire {
namespace {

ExchangeRecord& ThreadRecord()
{
    static thread_local ExchangeRecord record;
    return record;
}

} // namespace

const ExchangeRecord& LastExchange()
{
    return ThreadRecord();
}

std::string Path::Text() const
{
    std::size_t length = 0;
    for (std::size_t i = 0; i < count_; ++i) {
        length += pieces_[i].size();
    }
    std::string text;
    text.reserve(length);
    for (std::size_t i = 0; i < count_; ++i) {
        text.append(pieces_[i]);
    }
    return text;
}

Operation& Operation::Header(const char* name, std::string_view value)
{
    if (headerCount_ < kMaxHeaders) {
        headers_[headerCount_++] = {name, value};
    }
    return *this;
}

Operation& Operation::HeaderUnlessEmpty(const char* name, std::string_view value)
{
    return value.empty() ? *this : Header(name, value);
}

Operation& Operation::Timeout(std::int32_t timeoutMs)
{
    timeoutMs_ = timeoutMs;
    return *this;
}

RequestParams Operation::Build() const
{
    RequestParams request(path_.Text(), method_);
    if (body_ != nullptr) {
        request.body = core::Serialize(*body_);
    }
    for (std::size_t i = 0; i < headerCount_; ++i) {
        request.headers.emplace(headers_[i].first, headers_[i].second);
    }
    if (timeoutMs_ != 0) {
        request.timeoutMs = timeoutMs_;
    }
    return request;
}

namespace core {

namespace {

// Assigned member by member: the texts keep their memory from call to call.
void Note(ExchangeRecord& record, const RequestParams& request, bool sent, bool answered)
{
    record.path = request.url;
    record.method = request.method;
    record.sent = sent;
    record.answered = answered;
    record.parsed = false;
    record.category = record.number = 0;
    record.message.clear();
}

} // namespace

bool Execute(RspInfos& response, const RequestParams& request)
{
    ExchangeRecord& record = ThreadRecord();
    IRequestExecutor* const executor = RequestContext::Instance().Usable();
    Note(record, request, executor != nullptr, false);
    if (executor == nullptr) {
        return false;
    }
    const bool answered = executor->Execute(response, request, 1);
    Note(record, request, true, answered); // Again: the executor may have used the library.
    return answered;
}

InnerRequests::InnerRequests() : kept_(ThreadRecord()) {}

InnerRequests::~InnerRequests()
{
    ThreadRecord() = std::move(kept_);
}

Keel::Error::ErrorCode Failure()
{
    const ExchangeRecord& record = ThreadRecord();
    if (!record.sent) {
        return {0, 0, "nothing was sent: the library is not initialised or has no executor"};
    }
    if (record.answered) {
        return {0, 0, "the answer could not be read"};
    }
    return Keel::Error::GetLastError();
}

bool Run(const Operation& operation, protocol::ReturnData& envelope, Verdict verdict)
{
    RspInfos response;
    if (!Execute(response, operation.Build()) || !envelope.Parse(response.body)) {
        return false;
    }
    ExchangeRecord& record = ThreadRecord();
    record.parsed = true;
    record.category = envelope.code.category;
    record.number = envelope.code.number;
    record.message = envelope.msg;
    if (verdict == Verdict::Judge && envelope.code.number != 0) {
        Keel::Error::SetLastError(envelope.code);
        return false;
    }
    return true;
}

bool RunWithoutResult(const Operation& operation, Verdict verdict) noexcept
{
    return Guard([&] {
        protocol::ReturnData envelope;
        return Run(operation, envelope, verdict);
    });
}

bool RunForCode(const Operation& operation, protocol::IJSONStruct* fresh, int& code)
{
    protocol::ReturnData envelope;
    if (fresh != nullptr) {
        envelope.data = Borrow(*fresh);
    }
    const bool success = Run(operation, envelope, Verdict::Judge);
    if (LastExchange().parsed) {
        code = envelope.code.number;
    }
    return success;
}

} // namespace core

bool Exchange(const Operation& operation) noexcept
{
    return core::RunWithoutResult(operation, core::Verdict::Accept);
}

bool ExchangeJudged(const Operation& operation) noexcept
{
    return core::RunWithoutResult(operation, core::Verdict::Judge);
}

bool ExchangeForCode(const Operation& operation, int& code) noexcept
{
    return core::Guard([&] { return core::RunForCode(operation, nullptr, code); });
}

bool ExchangeUnread(const Operation& operation) noexcept
{
    return core::Guard([&] {
        RspInfos response;
        return core::Execute(response, operation.Build());
    });
}

} // namespace nexwire

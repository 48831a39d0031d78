#include "core/Pipeline.h"

#include <algorithm>
#include <stdexcept>

#include <keel/Error.h>
#include <keel/StringUtil.h>

#include "core/ConfigManager.h"
#include "core/FieldLayout.h"
#include "core/Serialize.h"

namespace nexwire {
namespace {

struct ThreadState {
    ExchangeRecord record;
    std::uint64_t exchanges = 0; ///< Begun so far.
};

ThreadState& State()
{
    return core::OfThread<ThreadState>();
}

ExchangeRecord& ThreadRecord()
{
    return State().record;
}

/// Assigned member by member: the texts keep their memory from call to call.
void Begin(ThreadState& state, const RequestParams& request)
{
    ++state.exchanges;
    ExchangeRecord& record = state.record;
    record.path = request.url;
    record.method = request.method;
    record.sent = record.answered = record.parsed = record.coded = false;
    record.category = record.number = 0;
    record.message.clear();
}

/// The field of that name, whatever its case; null when there is none.
const std::string* FindField(const RspInfos& response, const char* name)
{
    const std::string wanted = Keel::StringUtil::LowerCase(name);
    for (const auto& field : response.headers) {
        if (field.first.size() == wanted.size() && Keel::StringUtil::LowerCase(field.first) == wanted) {
            return &field.second;
        }
    }
    return nullptr;
}

} // namespace

const ExchangeRecord& LastExchange()
try {
    return ThreadRecord();
} catch (...) {
    static const ExchangeRecord none;
    return none;
}

Path::Path(const Path& other) : count_(other.count_)
{
    std::copy_n(other.pieces_, count_, pieces_);
}

std::string_view Path::View(const Piece& piece)
{
    return piece.length == kUnknownLength ? std::string_view(piece.text) : std::string_view(piece.text, piece.length);
}

std::string Path::Text() const
{
    std::string_view pieces[kMaxPieces];
    std::size_t length = 0;
    for (std::size_t i = 0; i < count_; ++i) {
        pieces[i] = View(pieces_[i]);
        length += pieces[i].size();
    }
    std::string text;
    text.reserve(length);
    for (std::size_t i = 0; i < count_; ++i) {
        text.append(pieces[i]);
    }
    return text;
}

Operation::Operation(std::int32_t method, const Path& path, const protocol::IInboundData* body)
    : path_(path), body_(body), method_(method)
{
}

Operation& Operation::Add(Entries& entries, const char* name, std::string_view value)
{
    for (auto& entry : entries) {
        if (entry.first == nullptr) {
            entry = {name, value};
            return *this;
        }
    }
    spoiled_ = true;
    return *this;
}

Operation& Operation::Text(std::string_view text)
{
    text_ = text;
    return *this;
}

Operation& Operation::HeaderUnlessEmpty(const char* name, std::string_view value)
{
    return value.empty() ? *this : Header(name, value);
}

Operation& Operation::Multipart()
{
    return Param("Content-Type", kMultipartType);
}

Operation& Operation::Timeout(std::int32_t timeoutMs)
{
    timeoutMs_ = timeoutMs;
    return *this;
}

Operation& Operation::ErrorFromAnswer()
{
    errorFromAnswer_ = true;
    return *this;
}

RequestParams Operation::Build() const
{
    if (spoiled_) {
        throw std::length_error("a request that cannot be said completely");
    }
    RequestParams request(std::string(), method_);
    request.url = path_.Text();
    if (body_ != nullptr) {
        request.body = core::Serialize(*body_);
    } else {
        request.body = text_;
    }
    const auto fill = [](std::map<std::string, std::string>& map, const Entries& entries) {
        for (const auto& entry : entries) {
            if (entry.first != nullptr) {
                map.emplace(entry.first, entry.second);
            }
        }
    };
    fill(request.headers, headers_);
    fill(request.params, params_);
    if (timeoutMs_ != 0) {
        request.timeoutMs = timeoutMs_;
    }
    return request;
}

namespace core {

bool Execute(RspInfos& response, const RequestParams& request, bool errorFromAnswer)
{
    ThreadState& state = State();
    Begin(state, request);
    const std::uint64_t number = state.exchanges;
    IRequestExecutor* const executor = RequestContext::Instance().Usable();
    if (executor == nullptr) {
        return false;
    }
    state.record.sent = true;
    const bool answered = executor->Execute(response, request, 1);
    if (state.exchanges != number) {
        // The executor called the library itself, to renew a token for example.
        Begin(state, request);
        state.record.sent = true;
    }
    state.record.answered = answered;
    if (!answered && errorFromAnswer) {
        protocol::ReturnData envelope;
        if (envelope.Parse(response.body) && envelope.code.number != 0) {
            Keel::Error::SetLastError(envelope.code);
        }
    }
    return answered;
}

bool Execute(RspInfos& response, const Operation& operation)
{
    return Execute(response, operation.Build(), operation.TakesErrorFromAnswer());
}

bool NotSent(const Operation& operation)
{
    Begin(State(), operation.Build());
    return false;
}

Keel::Error::ErrorCode FailureOfLastExchange()
{
    const ExchangeRecord& record = LastExchange();
    if (record.sent && !record.answered) {
        return Keel::Error::GetLastError();
    }
    Keel::Error::ErrorCode error;
    error.text = !record.sent ? "nothing was sent: the library is not initialised, has no executor or no memory"
                              : "the answer was not readable";
    return error;
}

InnerExchanges::~InnerExchanges()
{
    ThreadRecord() = std::move(outer_);
}

void SendOnly(protocol::IInboundData& structure, const void* base, const std::vector<const void*>& members)
{
    std::vector<std::string> keys;
    for (const void* const member : members) {
        const auto offset = static_cast<const char*>(member) - static_cast<const char*>(base);
        for (const Field& field : structure.Fields()) {
            if (field.offset == static_cast<std::size_t>(offset)) {
                keys.emplace_back(field.key);
            }
        }
    }
    structure.WriteOnly(std::move(keys));
}

bool Settle(const protocol::ReturnData& envelope, Verdict verdict)
{
    ExchangeRecord& record = ThreadRecord();
    record.parsed = true;
    record.coded = envelope.coded;
    record.category = envelope.code.category;
    record.number = envelope.code.number;
    record.message = envelope.msg;
    if (verdict == Verdict::Judge && envelope.code.number != 0) {
        Keel::Error::SetLastError(envelope.code);
        return false;
    }
    return true;
}

bool Run(const Operation& operation, protocol::ReturnData& envelope, Verdict verdict, std::string* text,
         const FieldTable* table)
{
    RspInfos response;
    if (!Execute(response, operation) || !ReadEnvelope(envelope, response.body, table) || !Settle(envelope, verdict)) {
        return false;
    }
    if (text != nullptr) {
        *text = std::move(response.body);
    }
    return true;
}

bool RunInto(const Operation& operation, Target result, Verdict verdict, std::string* text) noexcept
{
    return Guard([&] {
        return result.ReplaceBy([&](protocol::IJSONStruct& fresh) {
            protocol::ReturnData envelope(Borrow(fresh));
            return Run(operation, envelope, verdict, text, result.Table());
        });
    });
}

bool RunWithoutResult(const Operation& operation, Verdict verdict) noexcept
{
    return Guard([&] {
        protocol::ReturnData envelope;
        return Run(operation, envelope, verdict);
    });
}

bool RunForCode(const Operation& operation, protocol::IJSONStruct* fresh, const FieldTable* table, int& code)
{
    protocol::ReturnData envelope;
    if (fresh != nullptr) {
        envelope.data = Borrow(*fresh);
    }
    const bool success = Run(operation, envelope, Verdict::Judge, nullptr, table);
    if (LastExchange().parsed) {
        code = envelope.code.number;
    }
    return success;
}

} // namespace core

bool Exchange(const Operation& operation, core::Target result) noexcept
{
    return core::RunInto(operation, result, core::Verdict::Accept);
}

bool Exchange(const Operation& operation) noexcept
{
    return core::RunWithoutResult(operation, core::Verdict::Accept);
}

bool ExchangeForText(const Operation& operation, std::string& text) noexcept
{
    return core::Guard([&] {
        protocol::ReturnData envelope;
        return core::Run(operation, envelope, core::Verdict::Accept, &text);
    });
}

bool ExchangeForText(const Operation& operation, core::Target result, std::string& text) noexcept
{
    return core::RunInto(operation, result, core::Verdict::Accept, &text);
}

bool ExchangeJudged(const Operation& operation, core::Target result) noexcept
{
    return core::RunInto(operation, result, core::Verdict::Judge);
}

bool ExchangeJudged(const Operation& operation) noexcept
{
    return core::RunWithoutResult(operation, core::Verdict::Judge);
}

bool ExchangeForCode(const Operation& operation, int& code) noexcept
{
    return core::Guard([&] { return core::RunForCode(operation, nullptr, nullptr, code); });
}

bool ExchangeForCode(const Operation& operation, core::Target result, int& code) noexcept
{
    return core::Guard([&] {
        return result.ReplaceBy(
            [&](protocol::IJSONStruct& fresh) { return core::RunForCode(operation, &fresh, result.Table(), code); });
    });
}

bool ExchangeForEnvelope(const Operation& operation, protocol::ReturnData& envelope) noexcept
{
    return core::Guard([&] {
        protocol::ReturnData fresh;
        if (!core::Run(operation, fresh, core::Verdict::Accept)) {
            return false;
        }
        envelope = std::move(fresh);
        return true;
    });
}

bool ExchangeUnread(const Operation& operation) noexcept
{
    return core::Guard([&] {
        RspInfos response;
        return core::Execute(response, operation);
    });
}

bool ExchangeForBytes(const Operation& operation, std::string& bytes) noexcept
{
    return core::Guard([&] {
        RspInfos response;
        if (!core::Execute(response, operation)) {
            return false;
        }
        bytes = std::move(response.body);
        return true;
    });
}

bool ExchangeForField(const Operation& operation, const char* field, std::string& value) noexcept
{
    std::string unread;
    return ExchangeForBytes(operation, unread, field, value);
}

bool ExchangeForBytes(const Operation& operation, std::string& bytes, const char* field, std::string& value) noexcept
{
    return core::Guard([&] {
        RspInfos response;
        if (!core::Execute(response, operation)) {
            return false;
        }
        if (const std::string* const found = FindField(response, field)) {
            std::string copy = *found;
            value = std::move(copy);
        }
        bytes = std::move(response.body);
        return true;
    });
}

} // namespace nexwire

#include "velanet/HttpClient.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <list>
#include <memory>

#include <curl/curl.h>

#include "httpcore/Connection.h"
#include "httpcore/Fields.h"
#include "httpcore/Trust.h"

namespace Vela::Net {

namespace {

using httpcore::SameName;
using Clock = std::chrono::steady_clock;

// More than any server takes; keeps the head of a request within what goes out in one piece.
const std::size_t kMaxHead = 60 * 1024;

bool IsOneOf(const std::string& name, std::initializer_list<const char*> names)
{
    return std::any_of(names.begin(), names.end(), [&](const char* other) { return SameName(name, other); });
}

bool HasControl(const std::string& text, unsigned char lowestAllowed)
{
    return std::any_of(text.begin(), text.end(), [&](char c) {
        const unsigned char byte = static_cast<unsigned char>(c);
        return byte < lowestAllowed || byte == 0x7F;
    });
}

int TimeoutOf(int milliseconds)
{
    return milliseconds < 1 ? CHttpClientRequest::kDefaultTimeoutMs : milliseconds;
}

struct AddressDeleter {
    void operator()(CURLU* address) const { curl_url_cleanup(address); }
};

// An address taken apart.
struct Address {
    std::unique_ptr<CURLU, AddressDeleter> parts;
    std::string text;   ///< What `parts` holds; calls mostly go to the address of the call before.
    std::string server; ///< Scheme (lower case), host and port, a blank behind each.
};

// What one thread keeps for its next calls.
struct Session {
    static constexpr std::size_t kMaxConnections = 4;

    struct Kept {
        std::string server;
        httpcore::Connection connection;
    };

    Address address;
    std::list<Kept> connections; ///< One a server; the one used last is the first.
};

// Of all threads.
httpcore::Trust& TrustInServers()
{
    static httpcore::Trust& trust = *new httpcore::Trust; // Threads may still send when the process ends.
    return trust;
}

// A thread's session, or none when the thread is past the destruction of its own.
Session* ThreadSession()
{
    static thread_local bool ended = false;
    struct Holder {
        Session session;
        ~Holder() { ended = true; }
    };
    static thread_local bool prepared = false;
    if (!prepared) {
        // Registering the destructor aborts the process when there is no room for it.
        void* const room = std::malloc(256);
        if (room == nullptr) {
            return nullptr;
        }
        std::free(room);
        prepared = true;
    }
    if (ended) {
        return nullptr;
    }
    static thread_local Holder holder;
    return &holder.session;
}

struct Failure {
    std::int32_t code;
    std::string text;
};

} // namespace

CHttpClientRequest::CHttpClientRequest(const std::string& method, const URL& url) : method_(method), url_(url) {}

void CHttpClientRequest::SetMethod(const std::string& method)
{
    method_ = method;
}

void CHttpClientRequest::SetContentType(const std::string& contentType)
{
    AddHeaderField("Content-Type", contentType);
}

void CHttpClientRequest::AddHeaderField(const std::string& name, const std::string& value)
{
    if (IsOneOf(name, {"Content-Type", "Content-Length", "Host", "User-Agent", "Accept"})) {
        for (HeaderField& field : fields_) {
            if (SameName(field.name, name)) {
                field.value = value;
                return;
            }
        }
    }
    fields_.push_back({name, value});
}

void CHttpClientRequest::SetData(const std::string& data)
{
    hasData_ = true;
    data_ = data;
}

void CHttpClientRequest::SetReceiveTimeout(int milliseconds)
{
    receiveTimeoutMs_ = TimeoutOf(milliseconds);
}

void CHttpClientRequest::SetSendTimeout(int milliseconds)
{
    sendTimeoutMs_ = TimeoutOf(milliseconds);
}

void CHttpClientRequest::SetConnectionTimeout(int milliseconds)
{
    connectionTimeoutMs_ = TimeoutOf(milliseconds);
}

void CHttpClientRequest::SetMaxResponseSize(std::uint64_t bytes)
{
    maxResponseSize_ = bytes;
}

void CHttpClientResponse::GetResponseData(std::string* data) const
{
    if (data != nullptr) {
        *data = data_;
    }
}

// One exchange on a connection of a session. Throws Failure.
class HttpClient::Transfer {
public:
    Transfer(const CHttpClientRequest& request, CHttpClientResponse& response, Session& session)
        : request_(request), response_(response), session_(session)
    {
    }

    ~Transfer()
    {
        if (wire_ == nullptr) {
            return;
        }
        // What the handle points to ends here.
        wire_->Set(CURLOPT_HTTPHEADER, static_cast<curl_slist*>(nullptr));
        wire_->Set(CURLOPT_POSTFIELDS, static_cast<const char*>(nullptr));
        if (!wire_->Keepable() || !TrustInServers().MayKeep(session_.address.server)) {
            session_.connections.pop_front();
        }
    }

    void Run()
    {
        ReadAddress();
        BuildFields();
        TakeConnection();
        Prepare();
        started_ = Clock::now();
        httpcore::AnswerInto into;
        into.body = &response_.data_;
        into.bodyLimit = request_.maxResponseSize_;
        into.headOnly = request_.method_ == "HEAD";
        const httpcore::Ending ending = wire_->Run(into, false, [this] { return RemainingMs(); });
        if (wire_->LostKept()) {
            TrustInServers().Lost(session_.address.server);
        }
        if (ending != httpcore::Ending::Answered) {
            throw FailureOf(ending);
        }
        const httpcore::AnswerReader& answer = wire_->Answer();
        response_.status_ = answer.Status();
        response_.contentLength_ =
            answer.DeclaresLength() ? answer.DeclaredLength() : CHttpClientResponse::kUnknownLength;
    }

private:
    void ReadAddress()
    {
        const std::string& text = request_.url_.GetAddress();
        if (text.empty() || HasControl(text, 0x21)) {
            throw Failure{Error::kBadRequest, "the address is empty or has blanks or control characters"};
        }
        if (text.find('#') != std::string::npos) {
            throw Failure{Error::kBadRequest, "the address has a fragment"};
        }
        Address& address = session_.address;
        if (address.parts && address.text == text) {
            return;
        }
        address.parts.reset(curl_url());
        const CURLUcode result = address.parts ? curl_url_set(address.parts.get(), CURLUPART_URL, text.c_str(),
                                                              CURLU_PATH_AS_IS | CURLU_DISALLOW_USER)
                                               : CURLUE_OUT_OF_MEMORY;
        if (result != CURLUE_OK) {
            address.parts.reset();
            throw Failure{Error::kBadRequest, std::string("the address cannot be used: ") + curl_url_strerror(result)};
        }
        address.text = text;
        address.server.clear();
        for (const CURLUPart part : {CURLUPART_SCHEME, CURLUPART_HOST, CURLUPART_PORT}) {
            char* piece = nullptr;
            if (curl_url_get(address.parts.get(), part, &piece, CURLU_DEFAULT_PORT) == CURLUE_OK) {
                const std::unique_ptr<char, void (*)(void*)> owner(piece, &curl_free);
                address.server.append(piece).append(1, ' ');
            }
        }
    }

    void BuildFields()
    {
        hasBody_ = request_.hasData_;
        if (!httpcore::IsToken(request_.method_) || request_.method_.size() > 32) {
            throw Failure{Error::kBadRequest, "the method is not an HTTP token"};
        }
        std::size_t head = request_.url_.GetAddress().size();
        bool hasType = false;
        for (const CHttpClientRequest::HeaderField& field : request_.fields_) {
            if (!httpcore::IsToken(field.name)) {
                throw Failure{Error::kBadRequest, "a header field's name is not an HTTP token"};
            }
            if (HasControl(field.value, 0x20)) {
                throw Failure{Error::kBadRequest, "the header field " + field.name + " has control characters"};
            }
            if (IsOneOf(field.name, {"Transfer-Encoding", "Expect"})) {
                throw Failure{Error::kBadRequest, "the header field " + field.name + " cannot be set"};
            }
            if (SameName(field.name, "Content-Length")) {
                if (field.value != std::to_string(request_.data_.size())) {
                    throw Failure{Error::kBadRequest, "Content-Length " + field.value +
                                                          " is not the length of the data, " +
                                                          std::to_string(request_.data_.size())};
                }
                hasBody_ = true;
                continue;
            }
            hasType = hasType || SameName(field.name, "Content-Type");
            if (field.value.empty() && SameName(field.name, "Accept")) {
                fields_.LeaveOut("Accept");
            } else {
                fields_.Add(field.name, field.value);
            }
            head += field.name.size() + field.value.size() + 4;
        }
        if (head > kMaxHead) {
            throw Failure{Error::kBadRequest, "the address and the header fields are too long"};
        }
        if (!hasType) {
            fields_.LeaveOut("Content-Type");
        }
        fields_.LeaveOut("Expect");
    }

    // The kept connection to the server, or a new one, as the first of the session.
    void TakeConnection()
    {
        std::list<Session::Kept>& all = session_.connections;
        const std::string& server = session_.address.server;
        const auto kept = std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.server == server; });
        if (kept != all.end()) {
            if (kept->connection.IsClean() && TrustInServers().MayKeep(server)) {
                all.splice(all.begin(), all, kept);
                wire_ = &all.front().connection;
                return;
            }
            all.erase(kept);
        }
        std::list<Session::Kept> fresh;
        fresh.emplace_back().server = server;
        const bool overTls = server.compare(0, 6, "https ") == 0;
        httpcore::Connection& connection = fresh.front().connection;
        if (!connection.Open(overTls) || (overTls && !connection.SetTls(httpcore::TlsSettings()))) {
            throw Failure{Error::kInternal, "the HTTP library cannot be initialised"};
        }
        all.splice(all.begin(), fresh);
        if (all.size() > Session::kMaxConnections) {
            all.pop_back();
        }
        wire_ = &all.front().connection;
    }

    void Prepare()
    {
        if (!wire_->Set(CURLOPT_CURLU, session_.address.parts.get()) ||
            !wire_->Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(request_.connectionTimeoutMs_)) ||
            !wire_->Set(CURLOPT_HTTPHEADER, fields_.Get()) ||
            !wire_->SetMethod(request_.method_, hasBody_ ? &request_.data_ : nullptr)) {
            throw Failure{Error::kInternal, "the HTTP library refuses an option"};
        }
    }

    // Milliseconds left in the phase the exchange is in. Throws when there are none.
    int RemainingMs()
    {
        const Clock::time_point now = Clock::now();
        if (wire_->Started() && !sent_ && (wire_->Answer().Started() || wire_->SentBytes() >= request_.data_.size())) {
            sent_ = true;
            sentAt_ = now;
        }
        int limit = request_.receiveTimeoutMs_;
        Clock::time_point since = sentAt_;
        const char* text = "no whole answer within the receive time-out of ";
        if (!wire_->Started()) {
            limit = request_.connectionTimeoutMs_;
            since = started_;
            text = "no connection within the connection time-out of ";
        } else if (!sent_) {
            limit = request_.sendTimeoutMs_;
            since = wire_->StartedAt();
            text = "the request could not be sent within the send time-out of ";
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(since + std::chrono::milliseconds(limit) - now);
        if (left.count() <= 0) {
            throw Failure{Error::kTimeout, text + std::to_string(limit) + " ms"};
        }
        return static_cast<int>(left.count());
    }

    Failure FailureOf(httpcore::Ending ending) const
    {
        using httpcore::Ending;
        switch (ending) {
        case Ending::BodyTooLong:
            return {Error::kTooLarge,
                    "the answer is larger than " + std::to_string(request_.maxResponseSize_) + " bytes"};
        case Ending::HeadTooLong:
            return {Error::kTooLarge, "the head of the answer, or a line of it, is too long"};
        case Ending::Lost:
            return {Error::kBroken, "the server closed a kept connection before it answered"};
        case Ending::Incomplete:
            return {Error::kBroken, "the connection ended before the answer did"};
        case Ending::Malformed:
            return {Error::kBroken, "the answer is not proper HTTP: " + wire_->Why()};
        case Ending::Late:
            return {Error::kTimeout, wire_->Why()};
        case Ending::NoMemory:
            return {Error::kInternal, "out of memory"};
        case Ending::Answered:
        case Ending::Ended:
        case Ending::Failed:
            break;
        }
        switch (wire_->Code()) {
        case CURLE_FAILED_INIT:
            return {Error::kInternal, wire_->Why()};
        case CURLE_UNSUPPORTED_PROTOCOL:
            return {Error::kBadRequest, wire_->Why()};
        default:
            return {wire_->Started() ? Error::kBroken : Error::kConnect, wire_->Why()};
        }
    }

    const CHttpClientRequest& request_;
    CHttpClientResponse& response_;
    Session& session_;
    httpcore::Connection* wire_ = nullptr; ///< The first of the session.
    httpcore::FieldList fields_;
    bool hasBody_ = false;
    bool sent_ = false;
    Clock::time_point started_;
    Clock::time_point sentAt_;
};

bool HttpClient::Send(const CHttpClientRequest& request, CHttpClientResponse* response, Error* error) noexcept
{
    Failure failure{Error::kNone, {}};
    if (response == nullptr) {
        failure.code = Error::kBadRequest;
    } else {
        *response = CHttpClientResponse();
        try {
            Session* const kept = ThreadSession();
            if (kept != nullptr) {
                Transfer(request, *response, *kept).Run();
            } else {
                Session session;
                Transfer(request, *response, session).Run();
            }
        } catch (Failure& thrown) {
            failure = std::move(thrown);
        } catch (const std::exception&) {
            failure.code = Error::kInternal;
        }
        if (failure.code != Error::kNone) {
            *response = CHttpClientResponse();
        }
    }
    if (error != nullptr) {
        error->code = failure.code;
        error->text = std::move(failure.text);
    }
    return failure.code == Error::kNone;
}

} // namespace Vela::Net

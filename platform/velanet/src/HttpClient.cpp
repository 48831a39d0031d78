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

namespace Vela {
namespace Net {

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

CHttpClientRequest::CHttpClientRequest(const std::string& method, const URL& url) : m_method(method), m_url(url) {}

void CHttpClientRequest::SetMethod(const std::string& method)
{
    m_method = method;
}

void CHttpClientRequest::SetContentType(const std::string& contentType)
{
    AddHeaderField("Content-Type", contentType);
}

void CHttpClientRequest::AddHeaderField(const std::string& name, const std::string& value)
{
    if (IsOneOf(name, {"Content-Type", "Content-Length", "Host", "User-Agent", "Accept"})) {
        for (Field& field : m_fields) {
            if (SameName(field.name, name)) {
                field.value = value;
                return;
            }
        }
    }
    m_fields.push_back({name, value});
}

void CHttpClientRequest::SetData(const std::string& data)
{
    m_hasData = true;
    m_data = data;
}

void CHttpClientRequest::SetReceiveTimeout(int milliseconds)
{
    m_receiveTimeoutMs = TimeoutOf(milliseconds);
}

void CHttpClientRequest::SetSendTimeout(int milliseconds)
{
    m_sendTimeoutMs = TimeoutOf(milliseconds);
}

void CHttpClientRequest::SetConnectionTimeout(int milliseconds)
{
    m_connectionTimeoutMs = TimeoutOf(milliseconds);
}

void CHttpClientRequest::SetMaxResponseSize(std::uint64_t bytes)
{
    m_maxResponseSize = bytes;
}

void CHttpClientResponse::GetResponseData(std::string* data) const
{
    if (data != nullptr) {
        *data = m_data;
    }
}

// One exchange on a connection of a session. Throws Failure.
class HttpClient::Exchange {
public:
    Exchange(const CHttpClientRequest& request, CHttpClientResponse& response, Session& session)
        : m_request(request), m_response(response), m_session(session)
    {
    }

    ~Exchange()
    {
        if (m_wire == nullptr) {
            return;
        }
        // What the handle points to ends here.
        m_wire->Set(CURLOPT_HTTPHEADER, static_cast<curl_slist*>(nullptr));
        m_wire->Set(CURLOPT_POSTFIELDS, static_cast<const char*>(nullptr));
        if (!m_wire->Keepable() || !TrustInServers().MayKeep(m_session.address.server)) {
            m_session.connections.pop_front();
        }
    }

    void Run()
    {
        ReadAddress();
        BuildFields();
        TakeConnection();
        Prepare();
        m_started = Clock::now();
        httpcore::AnswerInto into;
        into.body = &m_response.m_data;
        into.bodyLimit = m_request.m_maxResponseSize;
        into.headOnly = m_request.m_method == "HEAD";
        const httpcore::Ending ending = m_wire->Run(into, false, [this] { return RemainingMs(); });
        if (m_wire->LostKept()) {
            TrustInServers().Lost(m_session.address.server);
        }
        if (ending != httpcore::Ending::Answered) {
            throw FailureOf(ending);
        }
        const httpcore::AnswerReader& answer = m_wire->Answer();
        m_response.m_status = answer.Status();
        m_response.m_contentLength =
            answer.DeclaresLength() ? answer.DeclaredLength() : CHttpClientResponse::kUnknownLength;
    }

private:
    void ReadAddress()
    {
        const std::string& text = m_request.m_url.GetAddress();
        if (text.empty() || HasControl(text, 0x21)) {
            throw Failure{Error::kBadRequest, "the address is empty or has blanks or control characters"};
        }
        if (text.find('#') != std::string::npos) {
            throw Failure{Error::kBadRequest, "the address has a fragment"};
        }
        Address& address = m_session.address;
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
        m_hasBody = m_request.m_hasData;
        if (!httpcore::IsToken(m_request.m_method) || m_request.m_method.size() > 32) {
            throw Failure{Error::kBadRequest, "the method is not an HTTP token"};
        }
        std::size_t head = m_request.m_url.GetAddress().size();
        bool hasType = false;
        for (const CHttpClientRequest::Field& field : m_request.m_fields) {
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
                if (field.value != std::to_string(m_request.m_data.size())) {
                    throw Failure{Error::kBadRequest, "Content-Length " + field.value +
                                                          " is not the length of the data, " +
                                                          std::to_string(m_request.m_data.size())};
                }
                m_hasBody = true;
                continue;
            }
            hasType = hasType || SameName(field.name, "Content-Type");
            if (field.value.empty() && SameName(field.name, "Accept")) {
                m_fields.LeaveOut("Accept");
            } else {
                m_fields.Add(field.name, field.value);
            }
            head += field.name.size() + field.value.size() + 4;
        }
        if (head > kMaxHead) {
            throw Failure{Error::kBadRequest, "the address and the header fields are too long"};
        }
        if (!hasType) {
            m_fields.LeaveOut("Content-Type");
        }
        m_fields.LeaveOut("Expect");
    }

    // The kept connection to the server, or a new one, as the first of the session.
    void TakeConnection()
    {
        std::list<Session::Kept>& all = m_session.connections;
        const std::string& server = m_session.address.server;
        const auto kept = std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.server == server; });
        if (kept != all.end()) {
            if (kept->connection.IsClean() && TrustInServers().MayKeep(server)) {
                all.splice(all.begin(), all, kept);
                m_wire = &all.front().connection;
                return;
            }
            all.erase(kept);
        }
        std::list<Session::Kept> fresh;
        fresh.emplace_back().server = server;
        if (!fresh.front().connection.Open(server.compare(0, 6, "https ") == 0)) {
            throw Failure{Error::kInternal, "the HTTP library cannot be initialised"};
        }
        all.splice(all.begin(), fresh);
        if (all.size() > Session::kMaxConnections) {
            all.pop_back();
        }
        m_wire = &all.front().connection;
    }

    void Prepare()
    {
        if (!m_wire->Set(CURLOPT_CURLU, m_session.address.parts.get()) ||
            !m_wire->Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(m_request.m_connectionTimeoutMs)) ||
            !m_wire->Set(CURLOPT_HTTPHEADER, m_fields.Get()) ||
            !m_wire->SetMethod(m_request.m_method, m_hasBody ? &m_request.m_data : nullptr)) {
            throw Failure{Error::kInternal, "the HTTP library refuses an option"};
        }
    }

    // Milliseconds left in the phase the exchange is in. Throws when there are none.
    int RemainingMs()
    {
        const Clock::time_point now = Clock::now();
        if (m_wire->Started() && !m_sent &&
            (m_wire->Answer().Started() || m_wire->SentBytes() >= m_request.m_data.size())) {
            m_sent = true;
            m_sentAt = now;
        }
        int limit = m_request.m_receiveTimeoutMs;
        Clock::time_point since = m_sentAt;
        const char* text = "no whole answer within the receive time-out of ";
        if (!m_wire->Started()) {
            limit = m_request.m_connectionTimeoutMs;
            since = m_started;
            text = "no connection within the connection time-out of ";
        } else if (!m_sent) {
            limit = m_request.m_sendTimeoutMs;
            since = m_wire->StartedAt();
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
                    "the answer is larger than " + std::to_string(m_request.m_maxResponseSize) + " bytes"};
        case Ending::HeadTooLong:
            return {Error::kTooLarge, "the head of the answer, or a line of it, is too long"};
        case Ending::Lost:
            return {Error::kBroken, "the server closed a kept connection before it answered"};
        case Ending::Incomplete:
            return {Error::kBroken, "the connection ended before the answer did"};
        case Ending::Malformed:
            return {Error::kBroken, "the answer is not proper HTTP: " + m_wire->Why()};
        case Ending::Late:
            return {Error::kTimeout, m_wire->Why()};
        case Ending::NoMemory:
            return {Error::kInternal, "out of memory"};
        case Ending::Answered:
        case Ending::Ended:
        case Ending::Failed:
            break;
        }
        switch (m_wire->Code()) {
        case CURLE_FAILED_INIT:
            return {Error::kInternal, m_wire->Why()};
        case CURLE_UNSUPPORTED_PROTOCOL:
            return {Error::kBadRequest, m_wire->Why()};
        default:
            return {m_wire->Started() ? Error::kBroken : Error::kConnect, m_wire->Why()};
        }
    }

    const CHttpClientRequest& m_request;
    CHttpClientResponse& m_response;
    Session& m_session;
    httpcore::Connection* m_wire = nullptr; ///< The first of the session.
    httpcore::FieldList m_fields;
    bool m_hasBody = false;
    bool m_sent = false;
    Clock::time_point m_started;
    Clock::time_point m_sentAt;
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
                Exchange(request, *response, *kept).Run();
            } else {
                Session session;
                Exchange(request, *response, session).Run();
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

} // namespace Net
} // namespace Vela

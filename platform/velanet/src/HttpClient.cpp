#include "velanet/HttpClient.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <exception>
#include <memory>

#include <curl/curl.h>

namespace Vela {
namespace Net {

namespace {

using Clock = std::chrono::steady_clock;

// More than any server takes; keeps the head of a request within what goes out in one piece.
const std::size_t kMaxHead = 60 * 1024;

char LowerAscii(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameName(const std::string& left, const std::string& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
}

bool IsOneOf(const std::string& name, std::initializer_list<const char*> names)
{
    return std::any_of(names.begin(), names.end(), [&](const char* other) { return SameName(name, other); });
}

bool IsToken(const std::string& text)
{
    static const std::string others = "!#$%&'*+-.^_`|~";
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= '0' && c <= '9') || (LowerAscii(c) >= 'a' && LowerAscii(c) <= 'z') ||
               others.find(c) != std::string::npos;
    });
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

struct EasyDeleter {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct MultiDeleter {
    void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
};
struct ListDeleter {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
struct AddressDeleter {
    void operator()(CURLU* address) const { curl_url_cleanup(address); }
};

// The handles of one thread; the connections that are kept for its next call live in `multi`.
struct Session {
    Session()
    {
        // The library is never cleaned up: other users of the process may still be at work.
        static const CURLcode initialised = curl_global_init(CURL_GLOBAL_DEFAULT);
        if (initialised == CURLE_OK) {
            multi.reset(curl_multi_init());
            easy.reset(curl_easy_init());
        }
        if (multi) {
            curl_multi_setopt(multi.get(), CURLMOPT_MAXCONNECTS, 4L);
        }
    }

    std::unique_ptr<CURLM, MultiDeleter> multi;
    std::unique_ptr<CURL, EasyDeleter> easy;
    std::unique_ptr<CURLU, AddressDeleter> address;
    /// What `address` holds; calls mostly go to the address of the call before.
    std::string addressText;
    /// Whether `easy` has the options that are the same for every request.
    bool prepared = false;
};

// A thread's session, or none when the thread is past the destruction of its own.
Session* ThreadSession()
{
    static thread_local bool ended = false;
    struct Holder {
        Session session;
        ~Holder() { ended = true; }
    };
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

// One exchange on the handles of a session. Throws Failure.
class HttpClient::Exchange {
public:
    Exchange(const CHttpClientRequest& request, CHttpClientResponse& response, Session& session)
        : m_request(request), m_response(response), m_session(session), m_multi(session.multi.get()),
          m_easy(session.easy.get())
    {
        if (m_multi == nullptr || m_easy == nullptr) {
            throw Failure{Error::kInternal, "the HTTP library cannot be initialised"};
        }
    }

    ~Exchange()
    {
        // Ends a transfer that is under way together with its connection.
        curl_multi_remove_handle(m_multi, m_easy);
        // What the handle points to ends here.
        curl_easy_setopt(m_easy, CURLOPT_HTTPHEADER, nullptr);
        curl_easy_setopt(m_easy, CURLOPT_POSTFIELDS, nullptr);
        curl_easy_setopt(m_easy, CURLOPT_ERRORBUFFER, nullptr);
    }

    void Run()
    {
        CheckAddress();
        m_hasBody = m_request.m_hasData;
        BuildFields();
        Prepare();
        Finish(Perform());
    }

private:
    void CheckAddress()
    {
        const std::string& address = m_request.m_url.GetAddress();
        if (address.empty() || HasControl(address, 0x21)) {
            throw Failure{Error::kBadRequest, "the address is empty or has blanks or control characters"};
        }
        if (address.find('#') != std::string::npos) {
            throw Failure{Error::kBadRequest, "the address has a fragment"};
        }
        if (m_session.address && m_session.addressText == address) {
            return;
        }
        m_session.address.reset(curl_url());
        const CURLUcode result = m_session.address
                                     ? curl_url_set(m_session.address.get(), CURLUPART_URL, address.c_str(),
                                                    CURLU_PATH_AS_IS | CURLU_DISALLOW_USER)
                                     : CURLUE_OUT_OF_MEMORY;
        if (result != CURLUE_OK) {
            m_session.address.reset();
            throw Failure{Error::kBadRequest, std::string("the address cannot be used: ") + curl_url_strerror(result)};
        }
        m_session.addressText = address;
    }

    void BuildFields()
    {
        if (!IsToken(m_request.m_method) || m_request.m_method.size() > 32) {
            throw Failure{Error::kBadRequest, "the method is not an HTTP token"};
        }
        std::size_t head = m_request.m_url.GetAddress().size();
        bool hasType = false;
        for (const CHttpClientRequest::Field& field : m_request.m_fields) {
            if (!IsToken(field.name)) {
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
            if (!field.value.empty()) {
                Append(field.name + ": " + field.value);
            } else {
                // The library's way to spell a field without a value, and one that is left out.
                Append(SameName(field.name, "Accept") ? "Accept:" : field.name + ";");
            }
            head += field.name.size() + field.value.size() + 4;
        }
        if (head > kMaxHead) {
            throw Failure{Error::kBadRequest, "the address and the header fields are too long"};
        }
        if (!hasType) {
            Append("Content-Type:");
        }
        Append("Expect:");
    }

    void Append(const std::string& line)
    {
        curl_slist* const longer = curl_slist_append(m_fields.get(), line.c_str());
        if (longer == nullptr) {
            throw std::bad_alloc();
        }
        static_cast<void>(m_fields.release());
        m_fields.reset(longer);
    }

    template <class Value>
    void Set(CURLoption option, Value value)
    {
        const CURLcode result = curl_easy_setopt(m_easy, option, value);
        if (result != CURLE_OK) {
            throw Failure{Error::kInternal,
                          std::string("the HTTP library refuses an option: ") + curl_easy_strerror(result)};
        }
    }

    void Prepare()
    {
        if (!m_session.prepared) {
            PrepareOnce();
            m_session.prepared = true;
        }
        Set(CURLOPT_CURLU, m_session.address.get());
        Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(m_request.m_connectionTimeoutMs));
        Set(CURLOPT_ERRORBUFFER, m_text.data());
        Set(CURLOPT_HTTPHEADER, m_fields.get());
        PrepareMethod();
        Set(CURLOPT_PREREQDATA, this);
        Set(CURLOPT_HEADERDATA, this);
        Set(CURLOPT_WRITEDATA, this);
    }

    // The options that no request changes.
    void PrepareOnce()
    {
        Set(CURLOPT_NOSIGNAL, 1L);
        Set(CURLOPT_PROXY, "");
        Set(CURLOPT_FOLLOWLOCATION, 0L);
        Set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
#if LIBCURL_VERSION_NUM >= 0x075500
        Set(CURLOPT_PROTOCOLS_STR, "http,https");
#else
        Set(CURLOPT_PROTOCOLS, static_cast<long>(CURLPROTO_HTTP | CURLPROTO_HTTPS));
#endif
#if LIBCURL_VERSION_NUM >= 0x075700
        // Do not wait for a name server when the time for connecting has passed.
        Set(CURLOPT_QUICK_EXIT, 1L);
#endif
        Set(CURLOPT_PREREQFUNCTION, &Exchange::OnConnected);
        Set(CURLOPT_HEADERFUNCTION, &Exchange::OnHeader);
        Set(CURLOPT_WRITEFUNCTION, &Exchange::OnData);
    }

    void PrepareMethod()
    {
        if (m_hasBody) {
            Set(CURLOPT_POST, 1L);
            Set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(m_request.m_data.size()));
            Set(CURLOPT_POSTFIELDS, m_request.m_data.data());
        } else if (m_request.m_method == "HEAD") {
            Set(CURLOPT_NOBODY, 1L);
        } else {
            Set(CURLOPT_HTTPGET, 1L);
        }
        Set(CURLOPT_CUSTOMREQUEST, m_request.m_method.c_str());
    }

    CURLcode Perform()
    {
        m_started = Clock::now();
        if (curl_multi_add_handle(m_multi, m_easy) != CURLM_OK) {
            throw Failure{Error::kInternal, "the HTTP library cannot start the request"};
        }
        for (;;) {
            int running = 0;
            if (curl_multi_perform(m_multi, &running) != CURLM_OK) {
                throw Failure{Error::kInternal, "the HTTP library cannot carry on with the request"};
            }
            int left = 0;
            while (const CURLMsg* message = curl_multi_info_read(m_multi, &left)) {
                if (message->msg == CURLMSG_DONE) {
                    return message->data.result;
                }
            }
            const int wait = RemainingMs();
            if (curl_multi_poll(m_multi, nullptr, 0, wait, nullptr) != CURLM_OK) {
                throw Failure{Error::kInternal, "the HTTP library cannot wait for the server"};
            }
        }
    }

    // Milliseconds left in the phase the exchange is in. Throws when there are none.
    int RemainingMs()
    {
        const Clock::time_point now = Clock::now();
        if (m_phase == Phase::Sending && (m_answering || SentBytes() >= m_request.m_data.size())) {
            m_phase = Phase::Receiving;
            m_phaseStarted = now;
        }
        int limit = m_request.m_receiveTimeoutMs;
        const char* text = "no whole answer within the receive time-out of ";
        if (m_phase == Phase::Connecting) {
            limit = m_request.m_connectionTimeoutMs;
            text = "no connection within the connection time-out of ";
        } else if (m_phase == Phase::Sending) {
            limit = m_request.m_sendTimeoutMs;
            text = "the request could not be sent within the send time-out of ";
        }
        const auto since = m_phase == Phase::Connecting ? m_started : m_phaseStarted;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(since + std::chrono::milliseconds(limit) - now);
        if (left.count() <= 0) {
            throw Failure{Error::kTimeout, text + std::to_string(limit) + " ms"};
        }
        return static_cast<int>(left.count());
    }

    std::uint64_t SentBytes() const
    {
        curl_off_t sent = 0;
        curl_easy_getinfo(m_easy, CURLINFO_SIZE_UPLOAD_T, &sent);
        return static_cast<std::uint64_t>(sent);
    }

    void Finish(CURLcode result)
    {
        if (result != CURLE_OK) {
            throw FailureOf(result);
        }
        long status = 0;
        curl_off_t length = -1;
        curl_easy_getinfo(m_easy, CURLINFO_RESPONSE_CODE, &status);
        // For the library a head that ends with the connection is a whole answer.
        if (!m_headEnded || status < 200) {
            throw Failure{Error::kBroken, "the connection ended within the head of the answer"};
        }
        curl_easy_getinfo(m_easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
        m_response.m_status = static_cast<int>(status);
        m_response.m_contentLength =
            length < 0 ? CHttpClientResponse::kUnknownLength : static_cast<std::uint64_t>(length);
    }

    Failure FailureOf(CURLcode result) const
    {
        if (m_tooLarge) {
            return {Error::kTooLarge,
                    "the answer is larger than " + std::to_string(m_request.m_maxResponseSize) + " bytes"};
        }
        if (m_repeated) {
            return {Error::kBroken, "the server closed a kept connection before it answered"};
        }
        const std::string text = m_text[0] != '\0' ? m_text.data() : curl_easy_strerror(result);
        switch (result) {
        case CURLE_OPERATION_TIMEDOUT:
            return {Error::kTimeout, text};
        case CURLE_OUT_OF_MEMORY:
        case CURLE_FAILED_INIT:
        case CURLE_WRITE_ERROR:
            return {Error::kInternal, text};
        case CURLE_UNSUPPORTED_PROTOCOL:
            return {m_phase == Phase::Connecting ? Error::kBadRequest : Error::kBroken, text};
        default:
            return {m_phase == Phase::Connecting ? Error::kConnect : Error::kBroken, text};
        }
    }

    // Called when a connection stands, before the request goes out. A second call means that the library found a kept
    // connection closed and wants to send again, which is only right when nothing was sent.
    static int OnConnected(void* self, char*, char*, int, int)
    {
        Exchange& exchange = *static_cast<Exchange*>(self);
        long sent = 0;
        curl_easy_getinfo(exchange.m_easy, CURLINFO_REQUEST_SIZE, &sent);
        if (sent > 0) {
            exchange.m_repeated = true;
            return CURL_PREREQFUNC_ABORT;
        }
        exchange.m_phase = Phase::Sending;
        exchange.m_phaseStarted = Clock::now();
        return CURL_PREREQFUNC_OK;
    }

    static std::size_t OnHeader(char* line, std::size_t size, std::size_t count, void* self)
    {
        Exchange& exchange = *static_cast<Exchange*>(self);
        const std::size_t length = size * count;
        exchange.m_answering = true;
        if (length >= 5 && std::equal(line, line + 5, "HTTP/")) {
            exchange.m_headEnded = false;
        } else if (length != 0 && (line[0] == '\r' || line[0] == '\n')) {
            exchange.m_headEnded = true;
        }
        curl_off_t declared = -1;
        curl_easy_getinfo(exchange.m_easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &declared);
        if (declared > 0 && static_cast<std::uint64_t>(declared) > exchange.m_request.m_maxResponseSize &&
            exchange.m_request.m_method != "HEAD") {
            exchange.m_tooLarge = true;
            return 0;
        }
        return length;
    }

    static std::size_t OnData(char* data, std::size_t size, std::size_t count, void* self)
    {
        Exchange& exchange = *static_cast<Exchange*>(self);
        std::string& body = exchange.m_response.m_data;
        if (exchange.m_request.m_maxResponseSize - body.size() < size * count) {
            exchange.m_tooLarge = true;
            return 0;
        }
        try {
            body.append(data, size * count);
        } catch (const std::exception&) {
            return 0;
        }
        return size * count;
    }

    enum class Phase { Connecting, Sending, Receiving };

    const CHttpClientRequest& m_request;
    CHttpClientResponse& m_response;
    Session& m_session;
    CURLM* const m_multi;
    CURL* const m_easy;
    std::unique_ptr<curl_slist, ListDeleter> m_fields;
    std::array<char, CURL_ERROR_SIZE> m_text{};
    bool m_hasBody = false;
    Phase m_phase = Phase::Connecting;
    Clock::time_point m_started;
    Clock::time_point m_phaseStarted;
    bool m_answering = false;
    bool m_headEnded = false;
    bool m_tooLarge = false;
    bool m_repeated = false;
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

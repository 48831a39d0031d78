#include "nexwire/host/HttpRequestExecutor.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <list>
#include <mutex>
#include <new>
#include <system_error>
#include <utility>
#include <vector>

#include <curl/curl.h>

#include "HostFailure.h"
#include "RequestCheck.h"
#include "Secrets.h"

namespace nexwire {
namespace host {

namespace {

using Clock = std::chrono::steady_clock;

/// A declared length is only a claim: more than this is not set aside before the bytes arrive.
constexpr std::uint64_t kLargestReserve = std::uint64_t{8} << 20;
/// Bytes of header fields of one answer.
constexpr std::uint64_t kLargestHeader = std::uint64_t{1} << 20;
/// How much of a body, a path or a redirect target an error text quotes.
constexpr std::size_t kQuotedBytes = 200;

struct UrlCloser {
    void operator()(CURLU* url) const { curl_url_cleanup(url); }
};

/// What the callbacks gather during one exchange.
struct Exchange {
    RspInfos* response = nullptr;
    std::uint64_t bodyLimit = 0;
    std::uint64_t received = 0; ///< Bytes of the answer, header fields included.
    std::uint64_t headerBytes = 0;
    std::uint64_t declared = 0;       ///< "Content-Length" of the answer, 0 when it has none.
    std::string* lastValue = nullptr; ///< Where a continuation line goes.
    bool inHeader = false;            ///< Between a status line and the blank line after it.
    bool tooLarge = false;
    bool outOfMemory = false;
    bool started = false; ///< The request was handed to a connection.
    bool repeatRefused = false;
};

/// One handle with the connection it keeps. Used by one thread at a time.
struct Connection {
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection()
    {
        curl_easy_cleanup(easy);
        if (multi != nullptr) {
            curl_multi_cleanup(multi);
        }
        curl_slist_free_all(fields);
    }

    CURL* easy = nullptr;
    CURLM* multi = nullptr; ///< Owns the connection; unlike an easy handle alone it can be woken from outside.
    curl_slist* fields = nullptr;
    // What `fields` was built from.
    std::map<std::string, std::string> headers;
    std::map<std::string, std::string> params;
    bool withBody = false;
    bool fieldsBuilt = false;
    std::string url;
    Exchange exchange;
    char detail[CURL_ERROR_SIZE] = {};
};

using Connections = std::list<Connection>;

std::string Trimmed(const char* begin, const char* end)
{
    while (begin < end && (*begin == ' ' || *begin == '\t')) {
        ++begin;
    }
    while (end > begin && std::strchr(" \t\r\n", end[-1]) != nullptr) {
        --end;
    }
    return std::string(begin, end);
}

void TakeField(Exchange& exchange, const char* line, std::size_t size)
{
    const char* const end = line + size;
    if (*line == ' ' || *line == '\t') {
        if (exchange.lastValue != nullptr) {
            *exchange.lastValue += ' ' + Trimmed(line, end);
        }
        return;
    }
    const char* const colon = std::find(line, end, ':');
    if (colon == end) {
        return;
    }
    const std::string name = Trimmed(line, colon);
    exchange.lastValue = &(exchange.response->headers[name] = Trimmed(colon + 1, end));
    if (SameName(name, "Content-Length")) {
        exchange.declared = std::strtoull(exchange.lastValue->c_str(), nullptr, 10);
    }
}

// Returns false to end the transfer.
bool TakeHeaderLine(Exchange& exchange, const char* line, std::size_t size)
{
    exchange.received += size;
    exchange.headerBytes += size;
    if (exchange.headerBytes > kLargestHeader) {
        exchange.tooLarge = true;
        return false;
    }
    if (size >= 5 && std::memcmp(line, "HTTP/", 5) == 0) {
        // An interim answer may have come before: only the final one counts.
        exchange.response->headers.clear();
        exchange.lastValue = nullptr;
        exchange.declared = 0;
        exchange.inHeader = true;
        return true;
    }
    if (!exchange.inHeader) {
        return true; // A trailer behind the body.
    }
    if (*line != '\r' && *line != '\n') {
        TakeField(exchange, line, size);
        return true;
    }
    exchange.inHeader = false;
    if (exchange.declared > exchange.bodyLimit) {
        exchange.tooLarge = true;
        return false;
    }
    exchange.response->body.reserve(static_cast<std::size_t>(std::min(exchange.declared, kLargestReserve)));
    return true;
}

std::size_t OnHeaderLine(char* line, std::size_t, std::size_t size, void* user) noexcept
{
    Exchange& exchange = static_cast<Connection*>(user)->exchange;
    try {
        return size != 0 && TakeHeaderLine(exchange, line, size) ? size : 0;
    } catch (const std::bad_alloc&) {
        exchange.outOfMemory = true;
        return 0;
    }
}

std::size_t OnBody(char* bytes, std::size_t, std::size_t size, void* user) noexcept
{
    Exchange& exchange = static_cast<Connection*>(user)->exchange;
    exchange.received += size;
    std::string& body = exchange.response->body;
    if (size > exchange.bodyLimit - body.size()) {
        exchange.tooLarge = true;
        return 0;
    }
    try {
        body.append(bytes, size);
        return size;
    } catch (const std::exception&) {
        exchange.outOfMemory = true;
        return 0;
    }
}

// libcurl repeats a request by itself when a kept connection dies before an answer, even if the request went out.
// This is called before every attempt, so it is where the second one ends, unless nothing was sent in the first.
int OnStart(void* user, char*, char*, int, int) noexcept
{
    auto& connection = *static_cast<Connection*>(user);
    long sent = 0;
    if (connection.exchange.started &&
        (curl_easy_getinfo(connection.easy, CURLINFO_REQUEST_SIZE, &sent) != CURLE_OK || sent != 0)) {
        connection.exchange.repeatRefused = true;
        return CURL_PREREQFUNC_ABORT;
    }
    connection.exchange.started = true;
    return CURL_PREREQFUNC_OK;
}

bool StartLibcurl()
{
    static const CURLcode result = curl_global_init(CURL_GLOBAL_DEFAULT);
    return result == CURLE_OK;
}

std::string ReasonOf(long systemError)
{
    return std::error_code(static_cast<int>(systemError), std::system_category()).message();
}

bool Readable(const std::string& file)
{
    return std::ifstream(file, std::ios::binary).good();
}

// libcurl reads "Name;" as a field without value, and "Name:" as a field to leave out.
std::string FieldLine(const std::string& name, const std::string& value)
{
    return value.find_first_not_of(' ') == std::string::npos ? name + ';' : name + ": " + value;
}

class FieldList {
public:
    FieldList() = default;
    FieldList(const FieldList&) = delete;
    FieldList& operator=(const FieldList&) = delete;
    ~FieldList() { curl_slist_free_all(m_list); }

    void Add(const std::string& line)
    {
        curl_slist* const grown = curl_slist_append(m_list, line.c_str());
        if (grown == nullptr) {
            throw std::bad_alloc();
        }
        m_list = grown;
    }

    curl_slist* Release() { return std::exchange(m_list, nullptr); }

private:
    curl_slist* m_list = nullptr;
};

} // namespace

struct HttpRequestExecutor::State {
    explicit State(const HttpExecutorOptions& given) : options(given) { problem = FindProblem(); }

    HttpExecutorOptions options;
    std::string problem;
    std::string base;   ///< Base address without trailing slash.
    std::string server; ///< "host:port", for texts.

    std::mutex mutex;
    std::condition_variable slowLane; ///< A place in the slow lane came free, or calls were aborted.
    std::condition_variable returned; ///< A call returned.
    std::size_t active = 0;
    std::size_t slowRunning = 0;
    bool suspended = false;
    Connections idle; ///< Warmest last.
    Connections busy;
    std::atomic<std::uint32_t> aborts{0};

    std::string FindProblem();
    std::string ReadBaseAddress();

    void Abort();
    bool Perform(RspInfos& response, const RequestParams& request);

    struct Call;
};

/// One call of `Execute`: its place among the active ones, in the slow lane, and its connection.
struct HttpRequestExecutor::State::Call {
    Call(State& state, bool isSlow) : m_state(state), m_slow(isSlow) {}
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    enum class Entry { Admitted, Aborted, Late };

    Entry Enter(Clock::time_point deadline)
    {
        std::unique_lock<std::mutex> lock(m_state.mutex);
        if (m_state.suspended) {
            return Entry::Aborted;
        }
        m_aborts = m_state.aborts.load(std::memory_order_relaxed);
        ++m_state.active;
        m_entered = true;
        if (m_slow) {
            const auto ready = [this] { return Aborted() || m_state.slowRunning < m_state.options.slowLaneSize; };
            if (!m_state.slowLane.wait_until(lock, deadline, ready)) {
                return Entry::Late;
            }
            if (Aborted()) {
                return Entry::Aborted;
            }
            ++m_state.slowRunning;
            m_inSlowLane = true;
        }
        if (!m_state.idle.empty()) {
            m_state.busy.splice(m_state.busy.end(), m_state.idle, std::prev(m_state.idle.end()));
            m_own = std::prev(m_state.busy.end());
            m_holds = true;
        }
        return Entry::Admitted;
    }

    /// The connection of the call, new when none was idle.
    Connection* Get()
    {
        if (!m_holds) {
            Connections fresh;
            if (!Prepare(m_state.options, fresh.emplace_back())) {
                return nullptr;
            }
            const std::lock_guard<std::mutex> lock(m_state.mutex);
            m_state.busy.splice(m_state.busy.end(), fresh);
            m_own = std::prev(m_state.busy.end());
            m_holds = true;
        }
        return &*m_own;
    }

    /// The connection is good for another request.
    void Keep() { m_keep = true; }

    /// One transfer on the connection, to its end or to `Abort()`.
    CURLcode Run(Connection& connection);

    /// Whether `Run` was cut short by `Abort()`.
    bool Ended() const { return m_ended; }

    bool Aborted() const { return m_state.aborts.load(std::memory_order_acquire) != m_aborts; }

    ~Call()
    {
        Connections done; // Closed after the lock is gone.
        const std::lock_guard<std::mutex> lock(m_state.mutex);
        if (m_holds && m_keep && m_state.options.maxIdleConnections > 0) {
            m_state.idle.splice(m_state.idle.end(), m_state.busy, m_own);
            if (m_state.idle.size() > m_state.options.maxIdleConnections) {
                done.splice(done.end(), m_state.idle, m_state.idle.begin());
            }
        } else if (m_holds) {
            done.splice(done.end(), m_state.busy, m_own);
        }
        if (m_inSlowLane) {
            --m_state.slowRunning;
            m_state.slowLane.notify_one();
        }
        if (m_entered && --m_state.active == 0) {
            m_state.returned.notify_all();
        }
    }

private:
    static bool Prepare(const HttpExecutorOptions& options, Connection& connection);

    State& m_state;
    const bool m_slow;
    std::uint32_t m_aborts = 0;
    bool m_entered = false;
    bool m_inSlowLane = false;
    bool m_holds = false;
    bool m_keep = false;
    bool m_ended = false;
    Connections::iterator m_own;
};

namespace {

template <class Value>
bool Set(CURL* easy, CURLoption option, Value value)
{
    return curl_easy_setopt(easy, option, value) == CURLE_OK;
}

// A text that is empty leaves the option alone.
bool SetText(CURL* easy, CURLoption option, const std::string& text)
{
    return text.empty() || Set(easy, option, text.c_str());
}

} // namespace

bool HttpRequestExecutor::State::Call::Prepare(const HttpExecutorOptions& options, Connection& connection)
{
    connection.easy = curl_easy_init();
    connection.multi = curl_multi_init();
    CURL* const easy = connection.easy;
    if (easy == nullptr || connection.multi == nullptr) {
        return false;
    }
    const long verify = options.verifyPeer ? 1 : 0;
    const auto onHeaderLine = static_cast<curl_write_callback>(OnHeaderLine);
    bool good = Set(easy, CURLOPT_ERRORBUFFER, connection.detail) && Set(easy, CURLOPT_NOSIGNAL, 1L) &&
                Set(easy, CURLOPT_QUICK_EXIT, 1L) && Set(easy, CURLOPT_PROTOCOLS_STR, "http,https") &&
                // Field names arrive as they were written, and one request is one exchange on one connection.
                Set(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1)) &&
                Set(easy, CURLOPT_PATH_AS_IS, 1L) && Set(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L) &&
                Set(easy, CURLOPT_HEADERFUNCTION, onHeaderLine) && Set(easy, CURLOPT_HEADERDATA, &connection) &&
                Set(easy, CURLOPT_WRITEFUNCTION, static_cast<curl_write_callback>(OnBody)) &&
                Set(easy, CURLOPT_WRITEDATA, &connection) &&
                Set(easy, CURLOPT_PREREQFUNCTION, static_cast<curl_prereq_callback>(OnStart)) &&
                Set(easy, CURLOPT_PREREQDATA, &connection) && Set(easy, CURLOPT_TCP_KEEPALIVE, 1L) &&
                Set(easy, CURLOPT_MAXAGE_CONN, static_cast<long>(options.maxIdleSeconds)) &&
                // An empty text keeps libcurl from asking the environment.
                Set(easy, CURLOPT_PROXY, options.proxy.c_str()) && Set(easy, CURLOPT_NOPROXY, "") &&
                SetText(easy, CURLOPT_USERAGENT, options.userAgent);
    good = good && Set(easy, CURLOPT_SSL_VERIFYPEER, verify) && Set(easy, CURLOPT_SSL_VERIFYHOST, verify * 2) &&
           Set(easy, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2)) &&
           SetText(easy, CURLOPT_CAINFO, options.caFile) &&
           SetText(easy, CURLOPT_SSLCERT, options.clientCertificateFile) &&
           SetText(easy, CURLOPT_SSLKEY, options.clientKeyFile) &&
           SetText(easy, CURLOPT_KEYPASSWD, options.clientKeyPassphrase);
    if (!options.caFile.empty()) {
        // Not every TLS library has a directory of authorities to switch off.
        (void)curl_easy_setopt(easy, CURLOPT_CAPATH, nullptr);
    }
    return good;
}

std::string HttpRequestExecutor::State::ReadBaseAddress()
{
    const std::unique_ptr<CURLU, UrlCloser> url(curl_url());
    const auto part = [&url](CURLUPart which, unsigned int flags) {
        char* text = nullptr;
        std::string value;
        if (curl_url_get(url.get(), which, &text, flags) == CURLUE_OK) {
            value = text;
        }
        curl_free(text);
        return value;
    };
    if (!url || curl_url_set(url.get(), CURLUPART_URL, options.baseAddress.c_str(), CURLU_PATH_AS_IS) != CURLUE_OK) {
        return "baseAddress is not an address such as \"https://host:port/prefix\"";
    }
    const std::string scheme = part(CURLUPART_SCHEME, 0);
    if (scheme != "http" && scheme != "https") {
        return "baseAddress has the scheme \"" + Printable(scheme, kQuotedBytes) + "\", not http or https";
    }
    if (options.baseAddress.find_first_of("?#@") != std::string::npos) {
        return "baseAddress has a user, a query or a fragment";
    }
    base = options.baseAddress;
    while (base.back() == '/') {
        base.pop_back();
    }
    const std::string prefix = RefusePath(part(CURLUPART_PATH, 0));
    if (!prefix.empty()) {
        return "baseAddress: " + prefix;
    }
    server = part(CURLUPART_HOST, 0) + ':' + part(CURLUPART_PORT, CURLU_DEFAULT_PORT);
    return std::string();
}

std::string HttpRequestExecutor::State::FindProblem()
{
    if (!StartLibcurl()) {
        return "libcurl cannot be initialised";
    }
    std::string reason = ReadBaseAddress();
    if (!reason.empty()) {
        return reason;
    }
    for (const auto& [code, verb] : options.verbs) {
        if (!IsToken(verb) || SameName(verb, "HEAD") || SameName(verb, "CONNECT")) {
            return "verbs: method code " + std::to_string(code) + " has no usable verb";
        }
    }
    for (const auto& [name, value] : options.extraHeaders) {
        reason = RefuseHeader(name, value);
        if (!reason.empty()) {
            return "extraHeaders: " + reason;
        }
    }
    if (!options.userAgent.empty()) {
        reason = RefuseHeader("User-Agent", options.userAgent);
        if (!reason.empty()) {
            return "userAgent: " + reason;
        }
    }
    for (const auto& [name, file] : {std::make_pair("caFile", &options.caFile),
                                     std::make_pair("clientCertificateFile", &options.clientCertificateFile),
                                     std::make_pair("clientKeyFile", &options.clientKeyFile)}) {
        if (!file->empty() && !Readable(*file)) {
            return std::string(name) + " cannot be read: " + *file;
        }
    }
    if (options.clientCertificateFile.empty() && !options.clientKeyFile.empty()) {
        return "clientKeyFile is given without clientCertificateFile";
    }
    if (options.connectTimeoutMs < 1 || options.maxIdleSeconds < 1 || options.maxResponseBytes < 1 ||
        options.slowLaneSize < 1) {
        return "connectTimeoutMs, maxIdleSeconds, maxResponseBytes and slowLaneSize are at least 1";
    }
    return std::string();
}

void HttpRequestExecutor::State::Abort()
{
    const std::lock_guard<std::mutex> lock(mutex);
    suspended = true;
    aborts.fetch_add(1, std::memory_order_release);
    slowLane.notify_all();
    for (const Connection& connection : busy) {
        curl_multi_wakeup(connection.multi);
    }
}

namespace {

// The fields of the request as libcurl wants them. Rebuilt only when something differs from the request before.
void SetFields(const HttpExecutorOptions& options, const RequestParams& request, Connection& connection)
{
    const bool withBody = !request.body.empty();
    if (connection.fieldsBuilt && connection.withBody == withBody && connection.headers == request.headers &&
        connection.params == request.params) {
        return;
    }
    connection.fieldsBuilt = false;

    std::map<std::string, std::string, NameLess> fields(options.extraHeaders.begin(), options.extraHeaders.end());
    if (withBody) {
        fields.emplace("Content-Type", "application/json");
    }
    for (const auto* entries : {&request.headers, &request.params}) {
        for (const auto& [name, value] : *entries) {
            if (options.queryInUrl && entries == &request.headers && name == "query") {
                continue;
            }
            fields.erase(name); // The spelling of the later one goes out.
            fields.emplace(name, value);
        }
    }
    FieldList list;
    for (const auto& [name, value] : fields) {
        list.Add(FieldLine(name, value));
    }
    list.Add("Expect:"); // The body follows at once, whatever its length.
    if (fields.find("Content-Type") == fields.end()) {
        list.Add("Content-Type:");
    }
    curl_easy_setopt(connection.easy, CURLOPT_HTTPHEADER, nullptr);
    curl_slist_free_all(std::exchange(connection.fields, list.Release()));
    curl_easy_setopt(connection.easy, CURLOPT_HTTPHEADER, connection.fields);
    connection.headers = request.headers;
    connection.params = request.params;
    connection.withBody = withBody;
    connection.fieldsBuilt = true;
}

bool SetRequest(const std::string& verb, const RequestParams& request, Connection& connection)
{
    CURL* const easy = connection.easy;
    // Whatever carries a body or declares an empty one is a POST under another verb to libcurl.
    const bool post = !request.body.empty() || verb == "PUT" || verb == "POST" || verb == "PATCH";
    const bool own = verb == (post ? "POST" : "GET");
    return Set(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(post ? request.body.size() : 0)) &&
           Set(easy, CURLOPT_POSTFIELDS, post ? request.body.data() : "") &&
           Set(easy, post ? CURLOPT_POST : CURLOPT_HTTPGET, 1L) &&
           Set(easy, CURLOPT_CUSTOMREQUEST, own ? nullptr : verb.c_str()) &&
           Set(easy, CURLOPT_URL, connection.url.c_str());
}

long Milliseconds(Clock::duration duration)
{
    const auto count = std::chrono::duration_cast<std::chrono::milliseconds>(duration).count();
    return static_cast<long>(std::max<decltype(count)>(count, 1));
}

// Why a request never leaves; empty when it may.
std::string RefuseRequest(const RequestParams& request, const HttpExecutorOptions& options)
{
    std::string reason = RefusePath(request.url);
    for (const auto* entries : {&request.headers, &request.params}) {
        for (auto entry = entries->begin(); reason.empty() && entry != entries->end(); ++entry) {
            const bool inUrl = options.queryInUrl && entries == &request.headers && entry->first == "query";
            reason = inUrl ? RefuseQuery(entry->second) : RefuseHeader(entry->first, entry->second);
        }
    }
    return reason;
}

void SetUrl(const std::string& base, const HttpExecutorOptions& options, const RequestParams& request, std::string& url)
{
    url.assign(base).append(request.url);
    if (options.queryInUrl) {
        const auto query = request.headers.find("query");
        if (query != request.headers.end()) {
            url.append(1, '?').append(query->second);
        }
    }
}

bool IsSlow(const RequestParams& request)
{
    const auto mark = request.headers.find("RequstType");
    return mark != request.headers.end() && mark->second == "slowThread";
}

// libcurl's words for a failure.
std::string Detail(CURLcode result, const Connection& connection)
{
    const char* const words = connection.detail[0] != '\0' ? connection.detail : curl_easy_strerror(result);
    return " (" + Printable(words, kQuotedBytes) + ")";
}

bool FailTls(CURLcode result, const Connection& connection, const std::string& name, const std::string& server)
{
    const std::string detail = Detail(result, connection);
    long verify = 0;
    switch (result) {
    case CURLE_PEER_FAILED_VERIFICATION:
        if (curl_easy_getinfo(connection.easy, CURLINFO_SSL_VERIFYRESULT, &verify) == CURLE_OK && verify != 0) {
            return Fail(HostError::TlsFailed, name + "certificate of " + server + " not trusted" + detail +
                                                  "; give the authority that signed it as caFile");
        }
        return Fail(HostError::TlsFailed, name + "certificate of " + server + " does not fit" + detail);
    case CURLE_SSL_CACERT_BADFILE:
        return Fail(HostError::TlsFailed, name + "caFile cannot be used" + detail);
    case CURLE_SSL_CERTPROBLEM:
        return Fail(HostError::TlsFailed, name + "client certificate or its key cannot be used" + detail);
    default:
        return Fail(HostError::TlsFailed, name + "no TLS with " + server + detail);
    }
}

bool FailTransfer(CURLcode result, const Connection& connection, const std::string& name, const std::string& server)
{
    const std::string detail = Detail(result, connection);
    const std::string received = " after " + std::to_string(connection.exchange.received) + " bytes of the answer";
    long systemError = 0;
    switch (result) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return Fail(HostError::ResolveFailed, name + "name of the server or proxy unknown" + detail);
    case CURLE_COULDNT_CONNECT:
        curl_easy_getinfo(connection.easy, CURLINFO_OS_ERRNO, &systemError);
        return Fail(HostError::ConnectFailed, name + "could not connect to " + server +
                                                  (systemError != 0 ? " (" + ReasonOf(systemError) + ")" : detail) +
                                                  "; is the platform running?");
    case CURLE_PROXY:
        return Fail(HostError::ConnectFailed, name + "the proxy does not lead to " + server + detail);
    case CURLE_SEND_ERROR:
        return Fail(HostError::SendFailed, name + "connection to " + server + " broke while sending" + detail);
    case CURLE_GOT_NOTHING:
        return Fail(HostError::AnswerIncomplete, name + server + " closed the connection without an answer");
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
        if (std::strstr(connection.detail, "alert") != nullptr &&
            std::strstr(connection.detail, "certificate") != nullptr) {
            return Fail(HostError::TlsFailed, name + server + " does not accept our client certificate" + detail);
        }
        return Fail(HostError::AnswerIncomplete, name + "connection to " + server + " broke" + received + detail);
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
        return Fail(HostError::AnswerMalformed, name + "answer of " + server + " is not HTTP/1" + detail);
    case CURLE_OUT_OF_MEMORY:
        return Fail(HostError::OutOfMemory, name + "out of memory" + received);
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
        return FailTls(result, connection, name, server);
    default:
        return Fail(HostError::Internal,
                    name + "libcurl error " + std::to_string(static_cast<int>(result)) + " with " + server + detail);
    }
}

bool FailAnswer(long status, const Connection& connection, const RspInfos& response, const std::string& name,
                const std::string& server)
{
    std::string text = name + "status " + std::to_string(status) + " from " + server;
    char* redirect = nullptr;
    if (status < 400 && curl_easy_getinfo(connection.easy, CURLINFO_REDIRECT_URL, &redirect) == CURLE_OK &&
        redirect != nullptr) {
        const std::string target = redirect;
        text += ", redirect to " + Printable(target.substr(0, target.find('?')), kQuotedBytes) + " not followed";
    }
    if (!response.body.empty()) {
        // A secret that the cut would split is still whole here.
        text += ": " + Printable(WithoutSecrets(response.body.substr(0, kQuotedBytes * 4)), kQuotedBytes);
    }
    return FailStatus(status, text);
}

} // namespace

CURLcode HttpRequestExecutor::State::Call::Run(Connection& connection)
{
    struct Joined {
        explicit Joined(Connection& joining) : owner(joining), code(curl_multi_add_handle(joining.multi, joining.easy))
        {
        }
        ~Joined()
        {
            if (code == CURLM_OK) {
                curl_multi_remove_handle(owner.multi, owner.easy);
            }
        }
        Connection& owner;
        const CURLMcode code;
    };
    const Joined joined(connection);
    CURLMcode code = joined.code;
    int running = 1;
    while (code == CURLM_OK) {
        code = curl_multi_perform(connection.multi, &running);
        if (code != CURLM_OK || running == 0) {
            break;
        }
        if (Aborted()) {
            m_ended = true;
            return CURLE_ABORTED_BY_CALLBACK;
        }
        // Not longer than libcurl's own timers allow, and woken by Abort().
        code = curl_multi_poll(connection.multi, nullptr, 0, 1000, nullptr);
    }
    if (code != CURLM_OK) {
        return CURLE_FAILED_INIT;
    }
    int queued = 0;
    const CURLMsg* const message = curl_multi_info_read(connection.multi, &queued);
    return message != nullptr ? message->data.result : CURLE_FAILED_INIT;
}

bool HttpRequestExecutor::State::Perform(RspInfos& response, const RequestParams& request)
{
    const Clock::time_point entry = Clock::now();
    if (!problem.empty()) {
        return Fail(HostError::BadOptions, problem);
    }
    const auto verb = options.verbs.find(request.method);
    if (verb == options.verbs.end()) {
        return Fail(HostError::RequestRefused, "method code " + std::to_string(request.method) + " has no verb");
    }
    const auto name = [&] { return verb->second + ' ' + Printable(request.url, kQuotedBytes) + ": "; };
    const std::string reason = RefuseRequest(request, options);
    if (!reason.empty()) {
        return Fail(HostError::RequestRefused, name() + "not sent: " + reason);
    }

    const std::int32_t allowed = request.timeoutMs > 0 ? request.timeoutMs : RequestParams::kDefaultTimeoutMs;
    const std::string within = " within " + std::to_string(allowed) + " ms";
    const Clock::time_point deadline = entry + std::chrono::milliseconds(allowed);
    Call call(*this, IsSlow(request));
    switch (call.Enter(deadline)) {
    case Call::Entry::Admitted:
        break;
    case Call::Entry::Aborted:
        return Fail(HostError::Aborted, name() + "not sent: the executor was aborted");
    case Call::Entry::Late:
        return Fail(HostError::DeadlinePassed, name() + "not sent: no place in the slow lane" + within);
    }
    Connection* const connection = call.Get();
    if (connection == nullptr) {
        return Fail(HostError::Internal, name() + "no handle from libcurl");
    }
    CURL* const easy = connection->easy;
    const long left = Milliseconds(deadline - Clock::now());
    SetFields(options, request, *connection);
    SetUrl(base, options, request, connection->url);
    if (!SetRequest(verb->second, request, *connection) || !Set(easy, CURLOPT_TIMEOUT_MS, left) ||
        !Set(easy, CURLOPT_CONNECTTIMEOUT_MS, std::min(left, static_cast<long>(options.connectTimeoutMs)))) {
        return Fail(HostError::Internal, name() + "libcurl does not take the request");
    }
    Exchange& exchange = connection->exchange;
    exchange = Exchange();
    exchange.response = &response;
    exchange.bodyLimit = options.maxResponseBytes;
    connection->detail[0] = '\0';

    const CURLcode result = call.Run(*connection);

    long status = 0;
    if (result == CURLE_OK && curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status) == CURLE_OK && status != 0) {
        call.Keep();
        if ((status >= 200 && status < 300) || (options.anyStatusIsAnswer && !response.body.empty())) {
            return true;
        }
        return FailAnswer(status, *connection, response, name(), server);
    }
    response.headers.clear();
    response.body.clear();
    const std::string received = " (received " + std::to_string(exchange.received) + " bytes)";
    if (call.Ended()) {
        return Fail(HostError::Aborted, name() + "aborted" + received);
    }
    if (exchange.tooLarge) {
        return Fail(HostError::AnswerTooLarge, name() + "answer of " + server + " is longer than " +
                                                   std::to_string(options.maxResponseBytes) + " bytes");
    }
    if (exchange.outOfMemory) {
        return Fail(HostError::OutOfMemory, name() + "the answer does not fit into memory" + received);
    }
    if (exchange.repeatRefused) {
        return Fail(HostError::NotRepeated, name() + "the kept connection to " + server +
                                                " closed after the request was sent and before an answer; whether it "
                                                "was carried out is unknown, so it was not sent again");
    }
    if (result == CURLE_OPERATION_TIMEDOUT) {
        if (exchange.started) {
            return Fail(HostError::DeadlinePassed, name() + "no complete answer" + within + received);
        }
        if (options.connectTimeoutMs < left) {
            return Fail(HostError::ConnectFailed, name() + "no connection to " + server + " within " +
                                                      std::to_string(options.connectTimeoutMs) + " ms");
        }
        return Fail(HostError::DeadlinePassed, name() + "no connection to " + server + within);
    }
    return FailTransfer(result, *connection, name(), server);
}

HttpRequestExecutor::HttpRequestExecutor(const HttpExecutorOptions& options) : m_state(new State(options)) {}

HttpRequestExecutor::~HttpRequestExecutor()
{
    m_state->Abort();
    std::unique_lock<std::mutex> lock(m_state->mutex);
    m_state->returned.wait(lock, [this] { return m_state->active == 0; });
}

bool HttpRequestExecutor::Valid() const
{
    return m_state->problem.empty();
}

const std::string& HttpRequestExecutor::Problem() const
{
    return m_state->problem;
}

bool HttpRequestExecutor::Execute(RspInfos& response, const RequestParams& request, int)
{
    response.headers.clear();
    response.body.clear();
    try {
        return m_state->Perform(response, request);
    } catch (const std::exception&) {
        // Only memory can run out here, perhaps too far for a text as well.
        try {
            response = RspInfos();
            return Fail(HostError::OutOfMemory, "out of memory");
        } catch (const std::exception&) {
            return false;
        }
    }
}

void HttpRequestExecutor::Abort()
{
    m_state->Abort();
}

void HttpRequestExecutor::Resume()
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    m_state->suspended = false;
}

} // namespace host
} // namespace nexwire

#include "Connection.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <utility>

#include "RequestCheck.h"

namespace nexwire {
namespace host {

namespace {

/// A declared length is only a claim: more than this is not set aside before the bytes arrive.
constexpr std::uint64_t kLargestReserve = std::uint64_t{8} << 20;

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
// Asked before every attempt: only the first may go on, or one after an attempt in which nothing was sent.
bool MayAttempt(Connection& connection)
{
    long sent = 0;
    if (connection.exchange.started &&
        (curl_easy_getinfo(connection.easy, CURLINFO_REQUEST_SIZE, &sent) != CURLE_OK || sent != 0)) {
        connection.exchange.repeatRefused = true;
    }
    return !connection.exchange.repeatRefused;
}

// Before a new connection is made.
int OnSocket(void* user, curl_socket_t, curlsocktype) noexcept
{
    auto& connection = *static_cast<Connection*>(user);
    connection.exchange.connected = true;
    return MayAttempt(connection) ? CURL_SOCKOPT_OK : CURL_SOCKOPT_ERROR;
}

// When a connection stands, before the first byte of the request.
int OnStart(void* user, char*, char*, int, int) noexcept
{
    auto& connection = *static_cast<Connection*>(user);
    if (!MayAttempt(connection)) {
        return CURL_PREREQFUNC_ABORT;
    }
    connection.exchange.started = true;
    return CURL_PREREQFUNC_OK;
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

// A text that is empty leaves the option alone.
bool SetText(CURL* easy, CURLoption option, const std::string& text)
{
    return text.empty() || SetOption(easy, option, text.c_str());
}

// The fields of the request as libcurl wants them. Rebuilt only when something differs from the request before.
void SetFields(Connection& connection, const HttpExecutorOptions& options, const RequestParams& request)
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

void SetTarget(std::string& target, const std::string& prefix, const HttpExecutorOptions& options,
               const RequestParams& request)
{
    target.assign(prefix).append(request.url);
    if (options.queryInUrl) {
        const auto query = request.headers.find("query");
        if (query != request.headers.end()) {
            target.append(1, '?').append(query->second);
        }
    }
}

} // namespace

Connection::~Connection()
{
    curl_easy_cleanup(easy);
    if (multi != nullptr) {
        curl_multi_cleanup(multi);
    }
    curl_slist_free_all(fields);
}

bool Prepare(Connection& connection, const HttpExecutorOptions& options)
{
    connection.easy = curl_easy_init();
    connection.multi = curl_multi_init();
    CURL* const easy = connection.easy;
    if (easy == nullptr || connection.multi == nullptr) {
        return false;
    }
    const long verify = options.verifyPeer ? 1 : 0;
    const auto onHeaderLine = static_cast<curl_write_callback>(OnHeaderLine);
    bool good = SetOption(easy, CURLOPT_ERRORBUFFER, connection.detail) && SetOption(easy, CURLOPT_NOSIGNAL, 1L) &&
                SetOption(easy, CURLOPT_QUICK_EXIT, 1L) && SetOption(easy, CURLOPT_PROTOCOLS_STR, "http,https") &&
                // Field names arrive as they were written, and one request is one exchange on one connection.
                SetOption(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1)) &&
                SetOption(easy, CURLOPT_URL, options.baseAddress.c_str()) &&
                SetOption(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L) &&
                SetOption(easy, CURLOPT_HEADERFUNCTION, onHeaderLine) &&
                SetOption(easy, CURLOPT_HEADERDATA, &connection) &&
                SetOption(easy, CURLOPT_WRITEFUNCTION, static_cast<curl_write_callback>(OnBody)) &&
                SetOption(easy, CURLOPT_WRITEDATA, &connection) &&
                SetOption(easy, CURLOPT_PREREQFUNCTION, static_cast<curl_prereq_callback>(OnStart)) &&
                SetOption(easy, CURLOPT_PREREQDATA, &connection) &&
                SetOption(easy, CURLOPT_SOCKOPTFUNCTION, static_cast<curl_sockopt_callback>(OnSocket)) &&
                SetOption(easy, CURLOPT_SOCKOPTDATA, &connection) && SetOption(easy, CURLOPT_TCP_KEEPALIVE, 1L) &&
                SetOption(easy, CURLOPT_MAXAGE_CONN, static_cast<long>(options.maxIdleSeconds)) &&
                // An empty text keeps libcurl from asking the environment.
                SetOption(easy, CURLOPT_PROXY, options.proxy.c_str()) && SetOption(easy, CURLOPT_NOPROXY, "") &&
                SetText(easy, CURLOPT_USERAGENT, options.userAgent);
    good = good && SetOption(easy, CURLOPT_SSL_VERIFYPEER, verify) &&
           SetOption(easy, CURLOPT_SSL_VERIFYHOST, verify * 2) &&
           SetOption(easy, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2)) &&
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

bool SetRequest(Connection& connection, const HttpExecutorOptions& options, const std::string& prefix,
                const std::string& verb, const RequestParams& request)
{
    SetFields(connection, options, request);
    SetTarget(connection.target, prefix, options, request);
    CURL* const easy = connection.easy;
    // Whatever carries a body or declares an empty one is a POST under another verb to libcurl.
    const bool post = !request.body.empty() || verb == "PUT" || verb == "POST" || verb == "PATCH";
    const bool own = verb == (post ? "POST" : "GET");
    return SetOption(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(post ? request.body.size() : 0)) &&
           SetOption(easy, CURLOPT_POSTFIELDS, post ? request.body.data() : "") &&
           SetOption(easy, post ? CURLOPT_POST : CURLOPT_HTTPGET, 1L) &&
           SetOption(easy, CURLOPT_CUSTOMREQUEST, own ? nullptr : verb.c_str()) &&
           // As a part of the address libcurl would encode bytes above 0x7F.
           SetOption(easy, CURLOPT_REQUEST_TARGET, connection.target.c_str());
}

void NoteKept(Connection& connection)
{
    // Otherwise it is the one already known. Should it have been closed, it does not pass for clean.
    if (connection.exchange.connected &&
        curl_easy_getinfo(connection.easy, CURLINFO_ACTIVESOCKET, &connection.socket) != CURLE_OK) {
        connection.socket = CURL_SOCKET_BAD;
    }
}

bool IsClean(Connection& connection)
{
    if (connection.socket == CURL_SOCKET_BAD) {
        return true;
    }
    curl_waitfd watched = {connection.socket, CURL_WAIT_POLLIN, 0};
    return curl_multi_poll(connection.multi, &watched, 1, 0, nullptr) == CURLM_OK && watched.revents == 0;
}

} // namespace host
} // namespace nexwire

#include "nexwire/host/HttpRequestExecutor.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <list>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include <curl/curl.h>

#include "Connection.h"
#include "HostFailure.h"
#include "RequestCheck.h"
#include "TransferFailure.h"
#include "Waiting.h"
#include "nexwire/host/CallScope.h"
#include <httpcore/ServerCertificate.h>
#include <httpcore/Trust.h>
#include <keel/StringUtil.h>

namespace nexwire::host {

namespace {

using Clock = std::chrono::steady_clock;

struct UrlCloser {
    void operator()(CURLU* url) const { curl_url_cleanup(url); }
};

using Connections = std::list<Connection>;

bool Readable(const std::string& file)
{
    return std::ifstream(std::filesystem::u8path(file), std::ios::binary).good();
}

} // namespace

struct HttpRequestExecutor::State {
    explicit State(const HttpExecutorOptions& given) : options(given) { problem = FindProblem(); }

    HttpExecutorOptions options;
    std::string problem;
    std::string prefix; ///< What stands before the path of a request on the request line.
    std::string server; ///< "host:port", for texts.
    bool asksForNames = true;

    std::mutex mutex;
    std::condition_variable slowLane; ///< A place in the slow lane came free, or calls were aborted.
    std::condition_variable returned; ///< A call returned.
    std::size_t active = 0;
    std::size_t slowRunning = 0;
    bool suspended = false;
    Connections idle; ///< Warmest last.
    Connections busy;
    std::atomic<std::uint32_t> aborts{0};
    httpcore::Trust trust;

    std::string FindProblem();
    std::string ReadBaseAddress();

    void Abort();
    bool Perform(RspInfos& response, const RequestParams& request);

    struct Turn;
};

/// One call of `Execute`: its place among the active ones, in the slow lane, and its connection.
struct HttpRequestExecutor::State::Turn {
    Turn(State& state, bool isSlow) : state_(state), slow_(isSlow) {}
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    enum class Entry { Admitted, Aborted, Late };

    Entry Enter(Clock::time_point deadline)
    {
        std::unique_lock<std::mutex> lock(state_.mutex);
        if (state_.suspended) {
            return Entry::Aborted;
        }
        aborts_ = state_.aborts.load(std::memory_order_relaxed);
        ++state_.active;
        entered_ = true;
        if (slow_) {
            const auto ready = [this] { return Aborted() || state_.slowRunning < state_.options.slowLaneSize; };
            if (!state_.slowLane.wait_until(lock, deadline, ready)) {
                return Entry::Late;
            }
            if (Aborted()) {
                return Entry::Aborted;
            }
            ++state_.slowRunning;
            inSlowLane_ = true;
        }
        TakeIdle();
        return Entry::Admitted;
    }

    /// The connection of the call, new when none that is idle will do.
    Connection* Get()
    {
        while (holds_ && !own_->wire.IsClean()) {
            Connections done;
            const std::lock_guard<std::mutex> lock(state_.mutex);
            done.splice(done.end(), state_.busy, own_);
            holds_ = false;
            TakeIdle();
        }
        if (!holds_) {
            Connections fresh;
            if (!Prepare(fresh.emplace_back(), state_.options, state_.asksForNames)) {
                return nullptr;
            }
            const std::lock_guard<std::mutex> lock(state_.mutex);
            Take(fresh, fresh.begin());
        }
        return &*own_;
    }

    /// Also by the scope of the calling thread.
    bool Aborted() const
    {
        return state_.aborts.load(std::memory_order_acquire) != aborts_ || (scope_ != nullptr && scope_->Cancelled());
    }

    /// From another thread: has the call look whether it was aborted.
    void Wake()
    {
        const std::lock_guard<std::mutex> lock(state_.mutex);
        state_.slowLane.notify_all();
        if (holds_) {
            own_->wire.Wake();
        }
    }

    ~Turn()
    {
        Connections done; // Closed after the lock is gone.
        const std::lock_guard<std::mutex> lock(state_.mutex);
        if (holds_ && own_->wire.Keepable() && state_.options.maxIdleConnections > 0 &&
            state_.trust.MayKeep(state_.server)) {
            state_.idle.splice(state_.idle.end(), state_.busy, own_);
            if (state_.idle.size() > state_.options.maxIdleConnections) {
                done.splice(done.end(), state_.idle, state_.idle.begin());
            }
        } else if (holds_) {
            done.splice(done.end(), state_.busy, own_);
        }
        if (inSlowLane_) {
            --state_.slowRunning;
            state_.slowLane.notify_one();
        }
        if (entered_ && --state_.active == 0) {
            state_.returned.notify_all();
        }
    }

private:
    // All under the lock.

    // The connection that this thread used before, or else the warmest. Threads that swap connections pay for it on
    // both ends, because the system keeps those together that talk to each other.
    void TakeIdle()
    {
        if (state_.idle.empty() || !state_.trust.MayKeep(state_.server)) {
            return;
        }
        const auto mine = std::find_if(state_.idle.rbegin(), state_.idle.rend(), [](const Connection& connection) {
            return connection.user == std::this_thread::get_id();
        });
        Take(state_.idle, std::prev(mine == state_.idle.rend() ? state_.idle.end() : mine.base()));
    }
    void Take(Connections& from, Connections::iterator taken)
    {
        own_ = taken;
        own_->user = std::this_thread::get_id();
        state_.busy.splice(state_.busy.end(), from, own_);
        holds_ = true;
    }

    State& state_;
    const CallScope* const scope_ = CallScope::Current();
    const bool slow_;
    std::uint32_t aborts_ = 0;
    bool entered_ = false;
    bool inSlowLane_ = false;
    bool holds_ = false;
    Connections::iterator own_;
};

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
    if (!url || curl_url_set(url.get(), CURLUPART_URL, options.baseAddress.c_str(),
                             CURLU_PATH_AS_IS | CURLU_NON_SUPPORT_SCHEME) != CURLUE_OK) {
        return "baseAddress is not an address such as \"https://host:port/prefix\"";
    }
    const std::string scheme = part(CURLUPART_SCHEME, 0);
    if (scheme != "http" && scheme != "https") {
        return "baseAddress has the scheme \"" + Printable(scheme, kQuotedBytes) + "\", not http or https";
    }
    if (options.baseAddress.find_first_of("?#@") != std::string::npos) {
        return "baseAddress has a user, a query or a fragment";
    }
    // A proxy that forwards plain HTTP is told the whole address.
    const bool whole = scheme == "http" && !options.proxy.empty() && options.proxy.compare(0, 5, "socks") != 0;
    const std::size_t path = options.baseAddress.find('/', options.baseAddress.find("://") + 3);
    if (path != std::string::npos) {
        const std::string reason = RefusePath(options.baseAddress.substr(path));
        if (!reason.empty()) {
            return "baseAddress: " + reason;
        }
    }
    prefix = whole ? options.baseAddress : options.baseAddress.substr(std::min(path, options.baseAddress.size()));
    while (!prefix.empty() && prefix.back() == '/') {
        prefix.pop_back();
    }
    const std::string host = part(CURLUPART_HOST, 0);
    asksForNames = !options.proxy.empty() ||
                   (host.compare(0, 1, "[") != 0 && host.find_first_not_of("0123456789.") != std::string::npos);
    server = host + ':' + part(CURLUPART_PORT, CURLU_DEFAULT_PORT);
    return std::string();
}

std::string HttpRequestExecutor::State::FindProblem()
{
    if (!httpcore::StartLibcurl()) {
        return "libcurl cannot be initialised";
    }
    std::string reason = ReadBaseAddress();
    if (!reason.empty()) {
        return reason;
    }
    for (const auto& [code, verb] : options.verbs) {
        if (!httpcore::IsToken(verb) || httpcore::SameName(verb, "HEAD") || httpcore::SameName(verb, "CONNECT")) {
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
    if (httpcore::OnSchannel() && !options.clientKeyFile.empty()) {
        return "clientKeyFile cannot be used with the TLS of Windows; give certificate and key in one PKCS#12 file as "
               "clientCertificateFile";
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
        connection.wire.Wake();
    }
}

namespace {

constexpr std::int32_t kRead = 0;    ///< Method code of a request that changes nothing.
constexpr int kLongestWaitMs = 1000; ///< Also without any event.

long Milliseconds(Clock::duration duration)
{
    const auto count = std::chrono::duration_cast<std::chrono::milliseconds>(duration).count();
    return static_cast<long>(std::max<decltype(count)>(count, 1));
}

// Whether the body goes out as JSON. The later of the maps counts, see SetFields.
bool SendsJson(const RequestParams& request, const HttpExecutorOptions& options)
{
    for (const auto* entries : {&request.params, &request.headers, &options.extraHeaders}) {
        for (const auto& [name, value] : *entries) {
            if (httpcore::SameName(name, "Content-Type")) {
                return Keel::StringUtil::LowerCase(value).find("json") != std::string::npos;
            }
        }
    }
    return true;
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
    if (reason.empty() && SendsJson(request, options) && !Keel::StringUtil::IsUtf8(request.body)) {
        reason = "the body is JSON and not UTF-8";
    }
    return reason;
}

bool IsSlow(const RequestParams& request)
{
    const auto mark = request.headers.find("RequstType");
    return mark != request.headers.end() && mark->second == "slowThread";
}

} // namespace

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

    const std::int32_t allowed = AllowedMs(request);
    const Clock::time_point deadline = entry + std::chrono::milliseconds(allowed);
    Turn turn(*this, IsSlow(request));
    std::optional<CancelWatch> watch;
    if (CallScope::Current() != nullptr) {
        watch.emplace([&turn] { turn.Wake(); });
    }
    switch (turn.Enter(deadline)) {
    case Turn::Entry::Admitted:
        break;
    case Turn::Entry::Aborted:
        return Fail(HostError::Aborted, name() + "not sent: the executor was aborted");
    case Turn::Entry::Late:
        return Fail(HostError::DeadlinePassed,
                    name() + "not sent: no place in the slow lane within " + std::to_string(allowed) + " ms");
    }
    Connection* const connection = turn.Get();
    if (connection == nullptr) {
        return Fail(HostError::Internal, name() + "no handle from libcurl");
    }
    httpcore::Connection& wire = connection->wire;
    const long left = Milliseconds(deadline - Clock::now());
    if (!SetRequest(*connection, options, prefix, verb->second, request) || !wire.Set(CURLOPT_TIMEOUT_MS, left) ||
        !wire.Set(CURLOPT_CONNECTTIMEOUT_MS, std::min(left, static_cast<long>(options.connectTimeoutMs)))) {
        return Fail(HostError::Internal, name() + "libcurl does not take the request");
    }
    httpcore::AnswerInto into;
    into.body = &response.body;
    into.fields = &response.headers;
    into.bodyLimit = options.maxResponseBytes;
    // Woken by Abort().
    const httpcore::Ending ending =
        wire.Run(into, request.method == kRead, [&turn] { return turn.Aborted() ? -1 : kLongestWaitMs; });
    if (wire.LostKept()) {
        trust.Lost(server);
        Connections done; // Closed after the lock is gone.
        const std::lock_guard<std::mutex> lock(mutex);
        done.swap(idle);
    }
    if (ending == httpcore::Ending::Answered) {
        const int status = wire.Answer().Status();
        if ((status >= 200 && status < 300) || (options.anyStatusIsAnswer && !response.body.empty())) {
            return true;
        }
        return FailAnswer(*connection, response, name(), server);
    }
    response.headers.clear();
    response.body.clear();
    Attempt attempt{name(), server, options, allowed, options.connectTimeoutMs < left};
    return FailTransfer(ending, *connection, attempt);
}

HttpRequestExecutor::HttpRequestExecutor(const HttpExecutorOptions& options) : state_(new State(options)) {}

HttpRequestExecutor::~HttpRequestExecutor()
{
    state_->Abort();
    std::unique_lock<std::mutex> lock(state_->mutex);
    state_->returned.wait(lock, [this] { return state_->active == 0; });
}

bool HttpRequestExecutor::Valid() const
{
    return state_->problem.empty();
}

const std::string& HttpRequestExecutor::Problem() const
{
    return state_->problem;
}

bool HttpRequestExecutor::Execute(RspInfos& response, const RequestParams& request, int)
{
    response.headers.clear();
    response.body.clear();
    return Guarded(response, [&] { return state_->Perform(response, request); });
}

void HttpRequestExecutor::Abort()
{
    state_->Abort();
}

void HttpRequestExecutor::Resume()
{
    const std::lock_guard<std::mutex> lock(state_->mutex);
    state_->suspended = false;
}

} // namespace nexwire::host

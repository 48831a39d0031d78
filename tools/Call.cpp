#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>

#include <keel/Error.h>
#include <keel/Log.h>

#include "catalogue/Find.h"
#include "catalogue/Observed.h"
#include "nexwire/LastExchange.h"
#include "nexwire/Nexwire.h"
#include "nexwire/VideoWall/VideoWall.h"
#include "nexwire/host/ExchangeRecorder.h"
#include "nexwire/host/HostError.h"
#include "nexwire/host/HttpRequestExecutor.h"
#include "simulator/Platform.h"
#include "simulator/VideoWallService.h"
#include "tools/Commands.h"
#include "tools/Example.h"
#include "tools/Secrets.h"
#include "tools/Verbs.h"

namespace nexwire {
namespace tools {
namespace {

/// Gives every request a time-out of the user's choice.
class TimeoutExecutor : public IRequestExecutor {
public:
    TimeoutExecutor(std::unique_ptr<IRequestExecutor> inner, std::int32_t timeoutMs)
        : inner_(std::move(inner)), timeoutMs_(timeoutMs)
    {
    }

    bool Execute(RspInfos& response, const RequestParams& request, int flag) override
    {
        RequestParams changed = request;
        changed.timeoutMs = timeoutMs_;
        return inner_->Execute(response, changed, flag);
    }

private:
    std::unique_ptr<IRequestExecutor> inner_;
    std::int32_t timeoutMs_;
};

/// A command line that cannot be carried out; carries what to tell the user.
struct UsageError {
    std::string text;
};

/// "name=value" with the value resolved. Secrets must not stand on the command line.
std::pair<std::string, std::string> Assignment(const std::string& text, bool header)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw UsageError{"'" + text + "' is not name=value"};
    }
    const std::string name = text.substr(0, equals);
    std::string value;
    std::string error;
    bool typed = false;
    if (!Resolve(text.substr(equals + 1), value, typed, error)) {
        throw UsageError{"'" + name + "': " + error};
    }
    if (typed && (header ? IsSecretHeader(name) : IsSecret(name, value))) {
        throw UsageError{"'" + name + "' holds a secret, and others can read a command line: give it as " + name +
                         "=@env:VARIABLE or " + name + "=@file:PATH"};
    }
    return {name, value};
}

catalogue::Given Collect(const CallOptions& options)
{
    catalogue::Given given;
    for (const std::string& text : options.values) {
        given.values.push_back(Assignment(text, false));
    }
    if (!options.body.empty()) {
        std::string error;
        if (!ReadWhole(options.body, given.body, error)) {
            throw UsageError{error};
        }
        given.hasBody = true;
    }
    return given;
}

std::string TextOfHeader(const std::string& name, const std::string& value)
{
    return name + ": " + (IsSecretHeader(name) ? "***" : value);
}

int DryRun(catalogue::Call& call, const CallOptions& options, const std::map<std::string, std::string>& headers)
{
    catalogue::Recorder recorder;
    const catalogue::Trace trace = recorder.Run(call);
    if (!trace.sent) {
        Complain(call.function().Name() + " sends nothing for these values");
        return kFalse;
    }
    const RequestParams& request = trace.request;
    const std::int32_t timeout = options.timeoutMs > 0 ? options.timeoutMs : request.timeoutMs;
    std::string text = VerbOf(request.method) + " " + request.url + "\n";
    if (trace.direct) {
        text += "straight to the video wall service\n";
    } else {
        text += "method code: " + std::to_string(request.method) + "\n";
        text += "time-out: " + std::to_string(timeout) + " ms\n";
    }
    for (const auto& header : request.headers) {
        text += "header " + TextOfHeader(header.first, header.second) + "\n";
    }
    for (const auto& param : request.params) {
        text += "param " + TextOfHeader(param.first, param.second) + "\n";
    }
    for (const auto& header : headers) {
        text += "added header " + TextOfHeader(header.first, header.second) + "\n";
    }
    for (const std::string& before : trace.before) {
        text += "before it " + before + "\n";
    }
    if (!request.body.empty()) {
        text += "\n" + Redacted(request.body) + "\n";
    }
    Print(text);
    return kDone;
}

/// Tells how the exchange went, in one line.
void Report(const catalogue::Call& call, const catalogue::Outcome& outcome, bool direct, const ExchangeRecord& exchange,
            const Keel::Error::ErrorCode& last, std::int64_t milliseconds)
{
    std::string text = call.function().Name() + " returned " + (outcome.success ? "true" : "false") + " after " +
                       std::to_string(milliseconds) + " ms";
    if (!direct && exchange.sent) {
        text += "\n  " + VerbOf(exchange.method) + " " + exchange.path;
    }
    if (!direct && exchange.parsed) {
        text += "\n  envelope " + std::to_string(exchange.category) + "-" + std::to_string(exchange.number) +
                (exchange.message.empty() ? "" : " \"" + exchange.message + "\"");
    } else if (!direct && exchange.answered) {
        text += "\n  the answer is no envelope";
    } else if (!direct && !exchange.sent) {
        text += "\n  nothing was sent";
    }
    if (last.category != 0 || last.number != 0 || !last.text.empty()) {
        text += "\n  last error " + std::to_string(last.category) + "-" + std::to_string(last.number) +
                (last.text.empty() ? "" : " \"" + last.text + "\"");
    }
    Complain(text);
}

/// What the transport finds wrong with its options, by the names that they have here.
std::string InOptionsOfOurs(std::string problem)
{
    const std::pair<const char*, const char*> names[] = {
        {"baseAddress", "--server"}, {"caFile", "--ca"}, {"extraHeaders", "--header"}, {"proxy", "--proxy"}};
    for (const auto& name : names) {
        const std::string theirs = name.first;
        if (problem.compare(0, theirs.size(), theirs) == 0) {
            problem.replace(0, theirs.size(), name.second);
            break;
        }
    }
    return problem;
}

/// Host and port of an address such as "http://host:port".
void SplitAddress(const std::string& address, std::string& host, std::string& port)
{
    const std::size_t scheme = address.find("://");
    std::string rest = scheme == std::string::npos ? address : address.substr(scheme + 3);
    rest = rest.substr(0, rest.find('/'));
    const std::size_t colon = rest.rfind(':');
    const bool hasPort = colon != std::string::npos && rest.find(']', colon) == std::string::npos;
    host = rest.substr(0, hasPort ? colon : std::string::npos);
    port = hasPort ? rest.substr(colon + 1) : "80";
}

/// What answers: a server, a file of exchanges, or a platform of our own.
class Other {
public:
    Other(const CallOptions& options, bool direct, const std::map<std::string, std::string>& headers)
    {
        if (direct) {
            StartWall(options);
            return;
        }
        std::unique_ptr<IRequestExecutor> executor;
        if (!options.replayFile.empty()) {
            auto replay = std::make_unique<host::ReplayExecutor>(options.replayFile);
            if (!replay->Valid()) {
                throw UsageError{replay->Problem()};
            }
            executor = std::move(replay);
        } else {
            executor = Http(options, headers);
        }
        if (!options.recordFile.empty()) {
            auto recording = std::make_unique<host::RecordingExecutor>(std::move(executor), options.recordFile);
            recording_ = recording.get();
            executor = std::move(recording);
        }
        if (options.timeoutMs > 0) {
            executor = std::make_unique<TimeoutExecutor>(std::move(executor), options.timeoutMs);
        }
        NexwireInitParams params;
        params.executor = executor.get();
        if (NexwireInit(params)) {
            static_cast<void>(executor.release()); // The library's from here on.
            initialised_ = true;
        }
    }

    ~Other()
    {
        if (initialised_) {
            NexwireUnInit();
        }
    }

    Other(const Other&) = delete;
    Other& operator=(const Other&) = delete;

    bool RecordingFailed() const { return recording_ != nullptr && !recording_->Good(); }

private:
    std::unique_ptr<IRequestExecutor> Http(const CallOptions& options,
                                           const std::map<std::string, std::string>& headers)
    {
        host::HttpExecutorOptions http;
        http.baseAddress = options.server.empty() ? StartPlatform(options) : options.server;
        http.extraHeaders = headers;
        http.caFile = options.caFile;
        http.verifyPeer = !options.insecure;
        std::string error;
        bool typed = false;
        if (!Resolve(options.proxy, http.proxy, typed, error)) {
            throw UsageError{"--proxy: " + error};
        }
        if (typed && http.proxy.find('@') != std::string::npos) {
            throw UsageError{"the proxy's address holds a secret, and others can read a command line: give it as "
                             "--proxy @env:VARIABLE or --proxy @file:PATH"};
        }
        if (options.insecure) {
            Warn("--insecure: whoever answers is believed to be the server, and can read and change everything");
        }
        auto executor = std::make_unique<host::HttpRequestExecutor>(http);
        if (!executor->Valid()) {
            throw UsageError{InOptionsOfOurs(executor->Problem())};
        }
        return executor;
    }

    std::string StartPlatform(const CallOptions& options)
    {
        simulator::Options own;
        own.databasePath = options.database;
        own.threads = 1;
        platform_ = std::make_unique<simulator::Platform>(own);
        std::string error;
        if (!platform_->Start(error)) {
            throw UsageError{"the local platform does not start: " + error};
        }
        Complain("no --server: asking a local platform" +
                 (options.database.empty() ? std::string() : " with " + options.database));
        return "http://127.0.0.1:" + std::to_string(platform_->Port());
    }

    void StartWall(const CallOptions& options)
    {
        if (!options.headers.empty() || options.timeoutMs > 0 || options.insecure || !options.caFile.empty() ||
            !options.proxy.empty() || !options.recordFile.empty() || !options.replayFile.empty()) {
            throw UsageError{"video wall functions send for themselves; of the transport only --server can be chosen"};
        }
        std::string host = "127.0.0.1";
        std::string port;
        if (options.server.empty()) {
            wall_ = std::make_unique<simulator::VideoWallService>();
            std::string error;
            if (!wall_->Start(error)) {
                throw UsageError{"the local video wall service does not start: " + error};
            }
            port = std::to_string(wall_->Port());
            Complain("no --server: asking a local video wall service");
        } else {
            SplitAddress(options.server, host, port);
        }
        CTWDeviceCommon::init(host, port);
    }

    std::unique_ptr<simulator::Platform> platform_;
    std::unique_ptr<simulator::VideoWallService> wall_;
    host::RecordingExecutor* recording_ = nullptr;
    bool initialised_ = false;
};

bool IsTransportFailure(const catalogue::Outcome& outcome, bool direct, const ExchangeRecord& exchange,
                        const Keel::Error::ErrorCode& last)
{
    if (outcome.success) {
        return false;
    }
    if (direct) {
        return last.number == CTWDeviceCommon::kNetworkFailure;
    }
    return exchange.sent && !exchange.parsed;
}

int Run(const CallOptions& options)
{
    const std::vector<const catalogue::Function*> found = catalogue::Find(options.function);
    if (found.empty()) {
        return UnknownFunction(options.function);
    }
    std::map<std::string, std::string> headers;
    for (const std::string& text : options.headers) {
        headers.insert(Assignment(text, true));
    }
    std::string error;
    const std::unique_ptr<catalogue::Call> call = catalogue::Prepare(found, Collect(options), error);
    if (!call) {
        throw UsageError{options.function + ": " + error};
    }
    if (options.dryRun) {
        return DryRun(*call, options, headers);
    }
    const bool direct = catalogue::Recorder().Run(call->function()).direct;
    const Other other(options, direct, headers);
    Keel::Error::SetLastError({});
    const auto before = std::chrono::steady_clock::now();
    const catalogue::Outcome outcome = call->Run();
    const auto taken =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - before).count();
    const Keel::Error::ErrorCode last = Keel::Error::GetLastError();
    const ExchangeRecord& exchange = LastExchange();
    Report(*call, outcome, direct, exchange, last, taken);
    if (other.RecordingFailed()) {
        Warn("the exchange could not be recorded in " + options.recordFile);
    }
    if (!outcome.success) {
        return IsTransportFailure(outcome, direct, exchange, last) ? kTransport : kFalse;
    }
    const std::string result = call->Result(outcome);
    return Print((options.compact ? Compact(result) : Pretty(result)) + "\n") ? kDone : kTransport;
}

} // namespace

int CallFunction(const CallOptions& options)
{
    try {
        return Run(options);
    } catch (const UsageError& error) {
        Complain(error.text);
        return kUsage;
    }
}

} // namespace tools
} // namespace nexwire

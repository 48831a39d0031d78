#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <thread>

#include <keel/Error.h>
#include <keel/Log.h>
#include <keel/StringUtil.h>

#include "catalogue/Find.h"
#include "catalogue/Observed.h"
#include "nexwire/LastExchange.h"
#include "nexwire/Nexwire.h"
#include "nexwire/VideoWall/VideoWall.h"
#include "nexwire/host/CallScope.h"
#include "nexwire/host/ExchangeRecorder.h"
#include "nexwire/host/HostError.h"
#include "nexwire/host/MakeExecutor.h"
#include "simulator/Platform.h"
#include "simulator/VideoWallService.h"
#include "tools/Commands.h"
#include "tools/Example.h"
#include "tools/Json.h"
#include "tools/Merge.h"
#include "tools/Repeat.h"
#include "tools/Secrets.h"
#include "tools/Verbs.h"

namespace nexwire::tools {
namespace {

std::string ShownEntry(const std::string& name, const std::string& value)
{
    return name + ": " + (IsSecretHeader(name) ? "***" : Shown(value));
}

/// Text of several lines with a mark before each, harmless to a terminal.
std::string Marked(const char* mark, const std::string& text)
{
    const std::string redacted = Redacted(text);
    std::string marked;
    for (std::size_t begin = 0; begin < redacted.size();) {
        const std::size_t end = std::min(redacted.find('\n', begin), redacted.size());
        std::string line = redacted.substr(begin, end - begin);
        const std::size_t first = std::min(line.find_first_not_of('\t'), line.size());
        line = std::string(first * 2, ' ') + Keel::StringUtil::SingleLine(line.substr(first));
        marked += std::string(mark) + line + "\n";
        begin = end + 1;
    }
    return marked;
}

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

/// Shows what goes to and fro.
class WatchingExecutor : public IRequestExecutor {
public:
    explicit WatchingExecutor(std::unique_ptr<IRequestExecutor> inner) : inner_(std::move(inner)) {}

    bool Execute(RspInfos& response, const RequestParams& request, int flag) override
    {
        std::string text = "> " + VerbOf(request.method) + " " + Shown(request.url) + "\n";
        for (const auto* const fields : {&request.headers, &request.params}) {
            for (const auto& field : *fields) {
                text += "> " + ShownEntry(field.first, field.second) + "\n";
            }
        }
        std::fputs((text + Marked("> ", request.body)).c_str(), stderr);
        const bool answered = inner_->Execute(response, request, flag);
        text.clear();
        for (const auto& field : response.headers) {
            text += "< " + ShownEntry(field.first, field.second) + "\n";
        }
        text += Marked("< ", response.body);
        std::fputs((text.empty() ? "< no answer\n" : text).c_str(), stderr);
        return answered;
    }

private:
    std::unique_ptr<IRequestExecutor> inner_;
};

void ShowStep(const host::TraceStep& step)
{
    char when[32];
    std::snprintf(when, sizeof when, "%10.1f ms  ", static_cast<double>(step.microseconds) / 1000.0);
    std::fputs((when + Padded(step.part, 11) + Shown(step.text) + "\n").c_str(), stderr);
}

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
    if (typed && (header ? IsSecretHeader(name) || Redacted(value) != value : IsSecret(name, value))) {
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
    std::string text = VerbOf(request.method) + " " + Shown(request.url) + "\n";
    if (trace.direct) {
        text += "straight to the video wall service\n";
    } else {
        text += "method code: " + std::to_string(request.method) + "\n";
        text += "time-out: " + std::to_string(timeout) + " ms\n";
    }
    for (const auto& header : request.headers) {
        text += "header " + ShownEntry(header.first, header.second) + "\n";
    }
    for (const auto& param : request.params) {
        text += "param " + ShownEntry(param.first, param.second) + "\n";
    }
    for (const auto& header : headers) {
        text += "added header " + ShownEntry(header.first, header.second) + "\n";
    }
    for (const std::string& before : trace.before) {
        text += "before it " + Shown(before) + "\n";
    }
    if (!request.body.empty()) {
        text += "\n" + Redacted(request.body) + "\n";
    }
    return Output(text);
}

/// How a call went.
struct Course {
    catalogue::Outcome outcome;
    ExchangeRecord exchange; ///< Of functions that send for themselves it says nothing.
    Keel::Error::ErrorCode last;
    std::int64_t milliseconds = 0;
    bool direct = false; ///< The function sends for itself.
    int code = kDone;    ///< Exit code.
};

int CodeOf(const Course& course)
{
    if (course.direct) {
        if (course.outcome.success) {
            return kDone;
        }
        return course.last.number == CTWDeviceCommon::kNetworkFailure ? kTransport
               : course.last.number != 0                              ? kRefused
                                                                      : kFalse;
    }
    if (course.exchange.parsed && course.exchange.number != 0) {
        return kRefused;
    }
    if (course.outcome.success) {
        return kDone;
    }
    return course.exchange.sent && !course.exchange.parsed ? kTransport : kFalse;
}

Course Run(catalogue::Call& call, bool direct = false)
{
    Course course;
    course.direct = direct;
    Keel::Error::SetLastError({});
    const auto before = std::chrono::steady_clock::now();
    course.outcome = call.Run();
    course.milliseconds =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - before).count();
    course.last = Keel::Error::GetLastError();
    course.exchange = LastExchange();
    course.code = CodeOf(course);
    return course;
}

/// Tells how the exchange went, for people.
void Report(const catalogue::Call& call, const Course& course)
{
    const ExchangeRecord& exchange = course.exchange;
    std::string text = call.function().Name() + " returned " + (course.outcome.success ? "true" : "false") +
                       (course.code == kRefused ? ", refused," : "") + " after " + std::to_string(course.milliseconds) +
                       " ms";
    if (!course.direct && !exchange.path.empty()) {
        text += "\n  " + VerbOf(exchange.method) + " " + Shown(exchange.path);
    }
    if (!course.direct && exchange.parsed) {
        text += "\n  envelope " + std::to_string(exchange.category) + "-" + std::to_string(exchange.number) +
                (exchange.message.empty() ? "" : " \"" + Shown(exchange.message) + "\"");
    } else if (!course.direct && exchange.answered) {
        text += "\n  the answer is no envelope";
    } else if (!course.direct && !exchange.sent) {
        text += "\n  nothing was sent";
    }
    const Keel::Error::ErrorCode& last = course.last;
    if (last.category != 0 || last.number != 0 || !last.text.empty()) {
        text += "\n  last error " + std::to_string(last.category) + "-" + std::to_string(last.number) +
                (last.text.empty() ? "" : " \"" + Shown(last.text) + "\"");
    }
    Complain(text);
}

const char* OutcomeOf(int code)
{
    static const char* const names[] = {"done", "false", "usage", "no answer", "refused"};
    return names[code];
}

int OutputJson(const CallOptions& options, const JsonObject& object)
{
    return Output((options.compact ? Compact(object.Done()) : Pretty(object.Done())) + "\n");
}

/// `text` from elsewhere for programs: JSON spells control characters out itself.
std::string ForPrograms(const std::string& text)
{
    return Keel::StringUtil::IsUtf8(text) ? Redacted(text) : Shown(text);
}

/// Tells how the exchange went, for programs.
int ReportAsJson(const CallOptions& options, const catalogue::Call& call, const Course& course)
{
    const ExchangeRecord& exchange = course.exchange;
    const bool fromEnvelope = !course.direct && exchange.parsed;
    JsonObject object;
    object.Text("outcome", OutcomeOf(course.code)).Text("function", call.function().Name());
    object.Number("category", fromEnvelope ? exchange.category : course.last.category);
    object.Number("number", fromEnvelope ? exchange.number : course.last.number);
    object.Text("message", ForPrograms(fromEnvelope ? exchange.message : course.last.text));
    object.Json("result", course.code == kDone ? call.Result(course.outcome) : "null");
    object.Text("path", course.direct ? "" : ForPrograms(exchange.path)).Number("milliseconds", course.milliseconds);
    return OutputJson(options, object);
}

/// What the transport finds wrong with its options, by the names that they have here.
std::string InOptionsOfOurs(std::string problem)
{
    const std::pair<const char*, const char*> names[] = {{"baseAddress", "--server"},
                                                         {"caFile", "--ca"},
                                                         {"clientCertificateFile", "--cert"},
                                                         {"clientKeyFile", "--key"},
                                                         {"clientKeyPassphrase", "--key-passphrase"},
                                                         {"extraHeaders", "--header"},
                                                         {"proxy", "--proxy"}};
    for (const auto& name : names) {
        const std::string theirs = name.first;
        if (problem.compare(0, theirs.size(), theirs) == 0) {
            problem.replace(0, theirs.size(), name.second);
            break;
        }
    }
    return problem;
}

/// Host and port of the video wall's address, "http://host:port". The service speaks nothing else.
void SplitWallAddress(const std::string& address, std::string& host, std::string& port)
{
    const std::size_t scheme = address.find("://");
    if (scheme != std::string::npos && catalogue::LowerCase(address.substr(0, scheme)) != "http") {
        throw UsageError{"--server: the video wall is spoken to in clear, over http:// only"};
    }
    std::string rest = scheme == std::string::npos ? address : address.substr(scheme + 3);
    if (!rest.empty() && rest.back() == '/') {
        rest.pop_back();
    }
    if (rest.empty() || rest.find_first_of("/?#@") != std::string::npos) {
        throw UsageError{"--server: the address of a video wall is http://host[:port] and nothing else"};
    }
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
        host::ExecutorOptions parts;
        parts.transportName = options.replayFile.empty() ? "http" : "replay";
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
            parts.transportName = "recording > " + parts.transportName;
        }
        if (options.verbose) {
            executor = std::make_unique<WatchingExecutor>(std::move(executor));
        }
        if (options.retries > 0) {
            parts.retry = host::RetryOptions();
            parts.retry->attempts = options.retries + 1;
        }
        if (options.trace) {
            parts.trace = ShowStep;
        }
        executor = host::MakeExecutor(std::move(executor), parts);
        if (options.timeoutMs > 0) {
            executor = std::make_unique<TimeoutExecutor>(std::move(executor), options.timeoutMs);
        }
        NexwireInitParams params;
        params.executor = executor.get();
        if (NexwireInit(params)) {
            static_cast<void>(executor.release()); // The library's from here on.
            initialised_ = true;
        }
        scope_.emplace("", options.deadlineMs);
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
        http.clientCertificateFile = options.certificateFile;
        http.clientKeyFile = options.keyFile;
        http.verifyPeer = !options.insecure;
        std::string error;
        bool typed = false;
        if (!Resolve(options.proxy, http.proxy, typed, error)) {
            throw UsageError{"--proxy: " + error};
        }
        bool typedPassphrase = false;
        if (!Resolve(options.keyPassphrase, http.clientKeyPassphrase, typedPassphrase, error)) {
            throw UsageError{"--key-passphrase: " + error};
        }
        if (typedPassphrase && !options.keyPassphrase.empty()) {
            throw UsageError{"the key's passphrase is a secret, and others can read a command line: give it as "
                             "--key-passphrase @env:VARIABLE or --key-passphrase @file:PATH"};
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
        if (!options.quiet && !options.json) {
            Complain("no --server: asking a local platform" +
                     (options.database.empty() ? std::string() : " with " + options.database));
        }
        return "http://127.0.0.1:" + std::to_string(platform_->Port());
    }

    void StartWall(const CallOptions& options)
    {
        if (!options.headers.empty() || options.timeoutMs > 0 || options.insecure || !options.caFile.empty() ||
            !options.certificateFile.empty() || !options.keyFile.empty() || !options.proxy.empty() || options.verbose ||
            options.trace || !options.recordFile.empty() || !options.replayFile.empty() || options.retries > 0 ||
            options.deadlineMs > 0) {
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
            if (!options.quiet && !options.json) {
                Complain("no --server: asking a local video wall service");
            }
        } else {
            SplitWallAddress(options.server, host, port);
        }
        CTWDeviceCommon::init(host, port);
    }

    std::unique_ptr<simulator::Platform> platform_;
    std::unique_ptr<simulator::VideoWallService> wall_;
    std::optional<host::CallScope> scope_; ///< Of everything that is asked, encryption and reading included.
    host::RecordingExecutor* recording_ = nullptr;
    bool initialised_ = false;
};

/// Warns of structures that are given in part; or, where the user wants that, completes them with what is set now.
/// False when that could not be read, with its course.
bool Complete(catalogue::Call& call, const catalogue::Given& given, const CallOptions& options, Course& course)
{
    for (const PartialStructure& partial : PartialStructures(call, given)) {
        const std::unique_ptr<catalogue::Call> reader = ReaderOf(call, partial, given);
        if (!options.merge) {
            std::string missing;
            for (const std::string& key : partial.missing) {
                missing += (missing.empty() ? "" : ", ") + key;
            }
            if (!options.quiet) {
                Warn(partial.name + " is given in part; sent with their defaults: " + missing +
                     (reader ? " (--merge reads what is set now, with " + reader->function().Name() + ")" : ""));
            }
            continue;
        }
        if (!reader) {
            throw UsageError{"--merge: no function reads a " + partial.name + " with what is given"};
        }
        course = Run(*reader);
        if (course.code != kDone) {
            return false;
        }
        const std::vector<catalogue::Argument>& arguments = reader->function().Arguments();
        std::size_t output = 0;
        while (!arguments[output].output || arguments[output].type->shape != catalogue::Shape::Structure) {
            ++output;
        }
        std::string error;
        if (!call.Set(partial.argument, Merged(reader->Json(output), partial.given), error)) {
            throw UsageError{"--merge: " + error};
        }
    }
    return true;
}

int Finish(const CallOptions& options, const catalogue::Call& call, const Course& course)
{
    if (options.json) {
        const int written = ReportAsJson(options, call, course);
        return written == kDone ? course.code : written;
    }
    if (!options.quiet || course.code != kDone) {
        Report(call, course);
    }
    if (course.code != kDone) {
        return course.code;
    }
    const std::string result = call.Result(course.outcome);
    return Output((options.compact ? Compact(result) : Pretty(result)) + "\n");
}

/// Prints the elements of a page and of all that follow it as they come, so that no list is too long.
int Pages(catalogue::Call& call, const CallOptions& options)
{
    const std::int64_t first = PageOf(call);
    if (first == 0) {
        throw UsageError{options.function + ": nothing that it sends has a pageNo"};
    }
    PageView page;
    std::int64_t seen = 0;
    for (std::int64_t number = first;; ++number) {
        AskForPage(call, number);
        const Course course = Run(call);
        if (course.code != kDone) {
            return Finish(options, call, course);
        }
        if (!ReadPage(call.Result(course.outcome), page)) {
            throw UsageError{options.function + ": the result has no list"};
        }
        if (const int written = Output(page.lines); written != kDone) {
            return written;
        }
        seen += page.count;
        if (page.count == 0 || (first == 1 && page.total >= 0 && seen >= page.total)) {
            return kDone;
        }
    }
}

/// Asks until the work has come to its end and shows how far it is meanwhile.
int Follow(catalogue::Call& call, const CallOptions& options)
{
    constexpr std::chrono::milliseconds kBetween(250);
    for (;;) {
        const Course course = Run(call);
        ProgressView progress;
        if (course.code != kDone) {
            return Finish(options, call, course);
        }
        if (!ReadProgress(call.Result(course.outcome), progress)) {
            throw UsageError{options.function + ": the result tells no progress"};
        }
        if (!options.quiet) {
            ShowProgress(progress.percent, progress.finished);
        }
        if (progress.finished) {
            return Finish(options, call, course);
        }
        std::this_thread::sleep_for(kBetween);
    }
}

int Run(const CallOptions& options)
{
    const std::vector<const catalogue::Function*> found = catalogue::Find(options.function);
    if (found.empty()) {
        throw UsageError{UnknownFunctionText(options.function)};
    }
    std::map<std::string, std::string> headers;
    for (const std::string& text : options.headers) {
        headers.insert(Assignment(text, true));
    }
    std::string error;
    const catalogue::Given given = Collect(options);
    const std::unique_ptr<catalogue::Call> call = catalogue::Prepare(found, given, error);
    if (!call) {
        throw UsageError{options.function + ": " + error};
    }
    Course course;
    if (options.dryRun) {
        static_cast<void>(Complete(*call, given, options, course));
        return DryRun(*call, options, headers);
    }
    const bool direct = catalogue::Recorder().Run(call->function()).direct;
    const Other other(options, direct, headers);
    if (!Complete(*call, given, options, course)) {
        Complain("--merge: what is set now could not be read, and nothing was changed");
        return Finish(options, *call, course);
    }
    if (options.pages || options.follow) {
        return options.pages ? Pages(*call, options) : Follow(*call, options);
    }
    course = Run(*call, direct);
    if (other.RecordingFailed()) {
        Warn("the exchange could not be recorded in " + options.recordFile);
    }
    return Finish(options, *call, course);
}

} // namespace

int CallFunction(const CallOptions& options)
{
    try {
        return Run(options);
    } catch (const UsageError& error) {
        if (!options.json) {
            Complain(error.text);
            return kUsage;
        }
        JsonObject object;
        object.Text("outcome", OutcomeOf(kUsage)).Text("function", options.function);
        object.Number("category", 0).Number("number", 0).Text("message", error.text);
        object.Json("result", "null").Text("path", "").Number("milliseconds", 0);
        const int written = OutputJson(options, object);
        return written == kDone ? kUsage : written;
    }
}

} // namespace nexwire::tools

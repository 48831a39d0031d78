#include "src/Workbench.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <shared_mutex>

#include "src/Clock.h"
#include "src/ExchangeText.h"
#include "src/Expectations.h"
#include "src/Faults.h"
#include "src/Fields.h"
#include "src/Problem.h"
#include "src/Query.h"

namespace nexwire::simulator {
namespace {

constexpr std::string_view kRoot = "/_workbench/";
constexpr std::size_t kMostInEvent = 1000; // Exchanges that one event tells of.
constexpr std::chrono::seconds kSilence(15);
constexpr std::chrono::milliseconds kWorkStep(500);
using SteadyClock = std::chrono::steady_clock;

Answer JsonAnswer(const Json& value)
{
    Answer answer;
    answer.type = "application/json";
    answer.body = PrintJson(value);
    return answer;
}

Answer Failure(unsigned status, std::string_view text)
{
    Document error(rapidjson::kObjectType);
    Fields(error, error.GetAllocator()).Text("error", text);
    Answer answer = JsonAnswer(error);
    answer.status = status;
    return answer;
}

Document ParseBody(const Request& request)
{
    Document body;
    std::string error;
    if (!ParseJson(body, request.body.empty() ? "{}" : request.body, error)) {
        throw Problem(400, "the body is not JSON: " + error);
    }
    return body;
}

std::string TypeOf(std::string_view name)
{
    static constexpr std::pair<std::string_view, std::string_view> kTypes[] = {
        {".html", "text/html; charset=utf-8"}, {".js", "text/javascript; charset=utf-8"},
        {".css", "text/css; charset=utf-8"},   {".svg", "image/svg+xml"},
        {".json", "application/json"},         {".png", "image/png"}};
    for (const auto& [end, type] : kTypes) {
        if (EndsWith(name, end)) {
            return std::string(type);
        }
    }
    return "application/octet-stream";
}

std::string TagOf(std::string_view text)
{
    std::uint64_t hash = 1469598103934665603u; // FNV-1a.
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
    }
    return "\"" + std::to_string(hash) + "\"";
}

std::string Event(const char* name, const std::string& data)
{
    return std::string("event: ") + name + "\ndata: " + data + "\n\n";
}

/// The part of a path up to the next slash, which it loses.
std::string NextPart(std::string_view& path)
{
    const std::string_view part = path.substr(0, path.find('/'));
    path.remove_prefix(std::min(part.size() + 1, path.size()));
    return Decoded(part, false);
}

} // namespace

class Workbench::Impl {
public:
    explicit Impl(Parts parts) : parts_(std::move(parts)), texts_(parts_.description), started_(SteadyClock::now()) {}

    Answer Handle(const Request& request, const std::string& server)
    {
        try {
            if (request.path == "/" || request.path == "/_workbench") {
                Answer there;
                there.status = 302;
                there.fields = "Location: " + std::string(kRoot) + "\r\n";
                return there;
            }
            return Route(request, server);
        } catch (const Problem& problem) {
            return Failure(problem.Status(), problem.what());
        } catch (const Refusal& refusal) {
            return Failure(409, refusal.what());
        } catch (const std::exception& error) {
            return Failure(500, error.what());
        }
    }

    Answer Serve(const Request& request, const std::function<Answer()>& handle, const Refuse& refuse)
    {
        const auto gated = [&] {
            const std::shared_lock<std::shared_mutex> lock(resetting_);
            return handle();
        };
        if (faults_.Idle()) {
            return gated();
        }
        const auto rule = faults_.Strike(request.path, texts_.FunctionsOf(request.verb, request.path, request.body));
        return rule ? Spoil(*rule, gated, refuse) : gated();
    }

    void Observe(HttpServer::Done&& done, bool wall)
    {
        if (!expectations_.Idle()) {
            expectations_.Note(done.request.path, texts_.FunctionsOf(done.request.verb, done.request.path, *done.sent),
                               *done.sent);
        }
        log_.Add(std::move(done), parts_.clock.Now(), wall);
        ++exchanges_;
    }

    void OnReset(std::function<void()> begin)
    {
        const std::unique_lock<std::shared_mutex> lock(resetting_);
        beginAnew_ = std::move(begin);
    }

private:
    Answer Route(const Request& request, const std::string& server)
    {
        std::string_view path = std::string_view(request.path).substr(kRoot.size());
        const std::string first = NextPart(path);
        const std::string& verb = request.verb;
        const auto is = [&](const char* wantedVerb, std::string_view wantedPath) {
            return verb == wantedVerb && first == wantedPath;
        };
        Document out;
        Allocator& memory = out.GetAllocator();
        if (is("GET", "events")) {
            return Events(request);
        }
        if (first == "exchanges") {
            return Exchanges(request, std::string(path), server);
        }
        if (is("GET", "functions")) {
            return JsonAnswer(Functions(memory));
        }
        if (first == "state") {
            return State(request, path);
        }
        if (is("POST", "reset")) {
            const std::unique_lock<std::shared_mutex> lock(resetting_);
            Forget(parts_.store);
            parts_.seed();
            if (beginAnew_) {
                beginAnew_();
            }
            return Done();
        }
        if (is("POST", "seed")) {
            const std::unique_lock<std::shared_mutex> lock(resetting_);
            WriteSeed(parts_.store, parts_.description, ParseBody(request));
            return Done();
        }
        if (first == "devices") {
            return Devices(request, path);
        }
        if (is("GET", "jobs")) {
            return JsonAnswer(ListWork(parts_.description, parts_.store, parts_.clock.Now(), memory));
        }
        if (first == "faults") {
            return ChangeFaults(request);
        }
        if (first == "clock") {
            return Clock(request);
        }
        if (first == "expectations") {
            return Expect(request);
        }
        if (is("GET", "openapi.json")) {
            return OpenApi();
        }
        if (is("GET", "health")) {
            return JsonAnswer(Health(memory));
        }
        return verb == "GET" || verb == "HEAD" ? File(request)
                                               : throw Problem(404, verb + " " + request.path + " is nothing");
    }

    static Answer Done()
    {
        Answer answer;
        answer.type = "application/json";
        answer.body = "{}";
        return answer;
    }

    [[noreturn]] static void WrongVerb(const Request& request)
    {
        throw Problem(405, request.path + " does not take " + request.verb);
    }

    // ---- The page ----

    static Answer File(const Request& request)
    {
        const std::string name = request.path == kRoot ? std::string("index.html") : request.path.substr(kRoot.size());
        const auto& files = EmbeddedPage();
        const auto found =
            std::find_if(files.begin(), files.end(), [&](const PageFile& file) { return file.name == name; });
        if (found == files.end()) {
            throw Problem(404, "there is nothing under " + request.path);
        }
        Answer answer;
        const std::string tag = TagOf(found->text);
        answer.type = TypeOf(name);
        answer.fields = "ETag: " + tag +
                        "\r\nCache-Control: no-cache\r\nContent-Security-Policy: default-src 'self'\r\n"
                        "X-Content-Type-Options: nosniff\r\n";
        const auto known = request.headers.find("if-none-match");
        if (known != request.headers.end() && known->second == tag) {
            answer.status = 304;
        } else {
            answer.body = found->text;
        }
        return answer;
    }

    // ---- Exchanges ----

    /// Which exchanges are asked for; patterns match anywhere.
    struct Wish {
        explicit Wish(const Query& query)
            : function("*" + query.Text("function") + "*"), module(query.Text("module")),
              outcome(query.Text("outcome")), text(query.Text("text").empty() ? "" : "*" + query.Text("text") + "*")
        {
        }

        std::string function, module, outcome;
        std::string text; ///< Empty: any.
    };

    bool Wanted(const Json& summary, const KeptExchange& kept, const Wish& wish) const
    {
        const auto names = Elements(Member(summary, "functions"));
        const auto fits = [&](const Json& name) { return Fits(wish.function, AsText(&name)); };
        const auto holds = [&](std::string_view where) { return Fits(wish.text, where); };
        return (wish.function == "**" || std::any_of(names.begin(), names.end(), fits)) &&
               (wish.module.empty() || Same(AsText(Member(summary, "module")), wish.module)) &&
               (wish.outcome.empty() || AsText(Member(summary, "outcome")) == wish.outcome) &&
               (wish.text.empty() || holds(PrintJson(summary)) ||
                (kept.bodies &&
                 (holds(texts_.Redacted(*kept.bodies->sent)) || holds(texts_.Redacted(*kept.bodies->answer)))));
    }

    Answer Exchanges(const Request& request, const std::string& rest, const std::string& server)
    {
        const Query query(request.query);
        if (request.verb == "DELETE" && rest.empty()) {
            log_.Clear();
            return Done();
        }
        if (request.verb != "GET") {
            WrongVerb(request);
        }
        if (!rest.empty()) {
            Document out;
            const KeptExchange kept = log_.Find(Query("id=" + rest).Number("id", 0));
            if (kept.exchange == nullptr) {
                throw Problem(404, "exchange " + rest + " is not kept");
            }
            return JsonAnswer(texts_.Whole(kept, query.Flag("secrets"), server, out.GetAllocator()));
        }
        Answer answer;
        answer.type = "application/x-ndjson";
        std::vector<std::string> lines;
        const auto most = static_cast<std::size_t>(
            std::max<std::int64_t>(query.Number("limit", std::int64_t{ExchangeLog::kMostExchanges}), 0));
        const auto exchanges = log_.After(query.Number("after", 0), ExchangeLog::kMostExchanges);
        const Wish wish(query);
        // The newest that fit, told oldest first.
        for (auto kept = exchanges.rbegin(); kept != exchanges.rend() && lines.size() < most; ++kept) {
            Document out;
            Json summary = texts_.Summary(*kept, out.GetAllocator());
            if (Wanted(summary, *kept, wish)) {
                lines.push_back(PrintJson(query.Flag("full")
                                              ? texts_.Whole(*kept, query.Flag("secrets"), server, out.GetAllocator())
                                              : std::move(summary)));
            }
        }
        for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
            answer.body += *line + "\n";
        }
        return answer;
    }

    Json Functions(Allocator& memory) const
    {
        Json list(rapidjson::kArrayType);
        std::string last;
        for (const WireFunction& function : parts_.description.Library().Functions()) {
            if (function.name != last) { // Overloads follow each other.
                list.PushBack(Fields(memory)
                                  .Text("name", function.name)
                                  .Text("module", function.module)
                                  .Text("verb", function.verb)
                                  .Text("path", function.path)
                                  .Number("method", function.method)
                                  .Take(),
                              memory);
            }
            last = function.name;
        }
        return list;
    }

    // ---- Events ----

    /// Where one reader is.
    struct Reader {
        std::int64_t after = 0;
        std::uint64_t moment = 0;
        std::string work; ///< As it was told last.
        bool working = true;
        SteadyClock::time_point spoken;
        SteadyClock::time_point looked;
    };

    Answer Events(const Request& request)
    {
        const auto reader = std::make_shared<Reader>();
        const auto last = request.headers.find("last-event-id");
        const std::int64_t now = log_.LastId();
        reader->after = last != request.headers.end() ? Query("id=" + last->second).Number("id", now)
                                                      : Query(request.query).Number("after", now);
        reader->spoken = SteadyClock::now();
        parts_.store.ChangedSince(reader->moment);
        Answer answer;
        answer.type = "text/event-stream";
        answer.fields = "Cache-Control: no-store\r\n";
        answer.stream = [this, reader](std::string& out) {
            Tell(*reader, out);
            return true;
        };
        return answer;
    }

    void Tell(Reader& reader, std::string& out)
    {
        TellExchanges(reader, out);
        bool moved = false;
        for (const std::string& collection : parts_.store.ChangedSince(reader.moment)) {
            moved = true;
            if (collection != kOwnCollection) {
                Document data(rapidjson::kObjectType);
                Fields(data, data.GetAllocator()).Text("collection", collection);
                out += Event("state", PrintJson(data));
            }
        }
        const auto now = SteadyClock::now();
        reader.working = reader.working || moved;
        if (reader.working && now - reader.looked >= kWorkStep) {
            reader.looked = now;
            Document memory;
            const Json work = ListWork(parts_.description, parts_.store, parts_.clock.Now(), memory.GetAllocator());
            const std::string text = PrintJson(work);
            reader.working = text.find("\"running\"") != std::string::npos;
            if (text != reader.work) {
                out += reader.work.empty() ? "" : Event("jobs", "{}");
                reader.work = text;
            }
        }
        if (out.empty() && now - reader.spoken >= kSilence) {
            out = ": still here\n\n";
        }
        if (!out.empty()) {
            reader.spoken = now;
        }
    }

    void TellExchanges(Reader& reader, std::string& out) const
    {
        const auto exchanges = log_.After(reader.after, kMostInEvent);
        if (exchanges.empty()) {
            return;
        }
        const std::int64_t lost = exchanges.front().exchange->id - std::max<std::int64_t>(reader.after, 0) - 1;
        if (lost > 0) {
            out += Event("lost", "{\"count\":" + std::to_string(lost) + "}");
        }
        reader.after = exchanges.back().exchange->id;
        Document list(rapidjson::kArrayType);
        for (const KeptExchange& kept : exchanges) {
            list.PushBack(texts_.Summary(kept, list.GetAllocator()), list.GetAllocator());
        }
        out += "id: " + std::to_string(reader.after) + "\n" + Event("exchange", PrintJson(list));
    }

    // ---- State ----

    Answer State(const Request& request, std::string_view path)
    {
        Document out;
        Allocator& memory = out.GetAllocator();
        const std::string collection = NextPart(path);
        const std::string key = Decoded(path, false); // May have slashes of its own.
        if (collection == kOwnCollection) {
            throw Problem(404, "there is no collection \"" + collection + "\"");
        }
        if (request.verb == "GET" && collection.empty()) {
            return JsonAnswer(ListCollections(parts_.store, parts_.description, memory));
        }
        if (request.verb == "GET" && key.empty()) {
            const Query query(request.query);
            return JsonAnswer(ListDocuments(parts_.store, collection, query.Number("offset", 0),
                                            std::clamp<std::int64_t>(query.Number("limit", 100), 0, 1000),
                                            query.Text("text"), memory));
        }
        if (key.empty()) {
            WrongVerb(request);
        }
        if (request.verb == "PUT") {
            WriteDocument(parts_.store, parts_.description, collection, key, ParseBody(request));
            return Done();
        }
        Store::Transaction transaction(parts_.store);
        const auto document = transaction.Read(collection, key);
        if (!document) {
            throw Problem(404, "\"" + collection + "\" has no document \"" + key + "\"");
        }
        if (request.verb == "DELETE") {
            transaction.Erase(collection, key);
            transaction.Commit();
            return Done();
        }
        if (request.verb != "GET") {
            WrongVerb(request);
        }
        Answer answer = Done();
        answer.body = *document;
        return answer;
    }

    Answer Devices(const Request& request, std::string_view path)
    {
        Document out;
        Allocator& memory = out.GetAllocator();
        const std::string guid = NextPart(path);
        if (request.verb == "GET" && guid.empty()) {
            return JsonAnswer(ListDevices(parts_.description, parts_.store, parts_.clock.Now(), memory));
        }
        if (request.verb == "PUT" && path.empty()) {
            SwitchDevice(parts_.store, guid, ParseBody(request));
            return Done();
        }
        if (request.verb == "POST" && path == "alarm") {
            return JsonAnswer(
                ProvokeAlarm(parts_.description, parts_.store, parts_.clock.Now(), guid, ParseBody(request), memory));
        }
        WrongVerb(request);
    }

    // ---- What is told to happen ----

    Answer ChangeFaults(const Request& request)
    {
        if (request.verb == "PUT") {
            faults_.Set(ParseBody(request));
        } else if (request.verb == "POST") {
            faults_.Add(ParseBody(request));
        } else if (request.verb == "DELETE") {
            faults_.Clear();
        } else if (request.verb != "GET") {
            WrongVerb(request);
        }
        Document out;
        return JsonAnswer(faults_.List(out.GetAllocator()));
    }

    Answer Expect(const Request& request)
    {
        if (request.verb == "POST") {
            expectations_.Add(ParseBody(request), log_.LastId());
        } else if (request.verb == "DELETE") {
            expectations_.Clear();
        } else if (request.verb != "GET") {
            WrongVerb(request);
        }
        Document out;
        return JsonAnswer(expectations_.Report(texts_, log_, out.GetAllocator()));
    }

    Answer Clock(const Request& request)
    {
        if (request.verb == "POST") {
            const Document body = ParseBody(request);
            const Json* advance = Member(body, "advanceMs");
            const Json* scale = Member(body, "scale");
            constexpr std::int64_t kFarthest = std::int64_t{366} * 24 * 3600 * 1000 * 10;
            if ((advance != nullptr && (AsInt(advance, -1) < 0 || AsInt(advance) > kFarthest)) ||
                (scale != nullptr && !(AsDouble(scale) > 0.0 && AsDouble(scale) <= 1e6))) {
                throw Problem(400, "advanceMs is 0 to ten years, scale more than 0 and at most 1000000");
            }
            parts_.clock.Advance(AsInt(advance));
            if (scale != nullptr) {
                parts_.clock.SetScale(AsDouble(scale));
            }
            parts_.keepClock();
        } else if (request.verb != "GET") {
            WrongVerb(request);
        }
        Document out(rapidjson::kObjectType);
        Fields(out, out.GetAllocator()).Number("nowMs", parts_.clock.Now()).Value("scale", Json(parts_.clock.Scale()));
        return JsonAnswer(out);
    }

    Answer OpenApi()
    {
        if (!parts_.openApi) {
            throw Problem(404, "this platform was started without the document");
        }
        const std::lock_guard<std::mutex> lock(openApiMutex_);
        if (openApiText_.empty()) {
            openApiText_ = parts_.openApi();
        }
        Answer answer = Done();
        answer.body = openApiText_;
        return answer;
    }

    Json Health(Allocator& memory) const
    {
        const auto up = std::chrono::duration_cast<std::chrono::milliseconds>(SteadyClock::now() - started_);
        return Fields(memory)
            .Text("version", parts_.version)
            .Number("uptimeMs", up.count())
            .Number("exchanges", exchanges_)
            .Text("database", parts_.database)
            .Take();
    }

    const Parts parts_;
    const ExchangeText texts_;
    const SteadyClock::time_point started_;
    ExchangeLog log_;
    Faults faults_;
    Expectations expectations_;
    std::atomic<std::int64_t> exchanges_{0};
    std::shared_mutex resetting_; ///< Nobody else works while the platform begins anew.
    std::function<void()> beginAnew_;
    std::mutex openApiMutex_;
    std::string openApiText_;
};

Workbench::Workbench(Parts parts) : impl_(std::make_unique<Impl>(std::move(parts))) {}

Workbench::~Workbench() = default;

bool Workbench::Owns(std::string_view path)
{
    return path == "/" || path == "/_workbench" || path.substr(0, kRoot.size()) == kRoot;
}

Answer Workbench::Handle(const Request& request, const std::string& server)
{
    return impl_->Handle(request, server);
}

Answer Workbench::Serve(const Request& request, const std::function<Answer()>& handle, const Refuse& refuse)
{
    return impl_->Serve(request, handle, refuse);
}

void Workbench::Observe(HttpServer::Done&& done, bool wall)
{
    impl_->Observe(std::move(done), wall);
}

void Workbench::OnReset(std::function<void()> begin)
{
    impl_->OnReset(std::move(begin));
}

} // namespace nexwire::simulator

#include "simulator/Platform.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <mutex>
#include <thread>

#include "src/Clock.h"
#include "src/Fields.h"
#include "src/HttpServer.h"
#include "src/Services.h"
#include "src/Site.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kClock = "clock";

std::int64_t SystemNow()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

// A database keeps its key, so that what was encrypted before a restart can be read after it.
std::shared_ptr<const Cipher> MakeCipher(Store& store)
{
    Store::Transaction transaction(store);
    std::string key = transaction.Read(kOwnCollection, "cipherKey").value_or("");
    if (key.empty()) {
        key = Cipher::NewKey();
        transaction.Write(kOwnCollection, "cipherKey", key);
    }
    transaction.Commit();
    return std::make_shared<const Cipher>(key);
}

// A database keeps its time, so that what was to come does not come again.
void KeepClock(Store& store, const PlatformClock& clock)
{
    Document kept(rapidjson::kObjectType);
    Fields(kept, kept.GetAllocator()).Number("aheadMs", clock.Ahead());
    Store::Transaction transaction(store);
    transaction.Write(kOwnCollection, kClock, PrintJson(kept));
    transaction.Commit();
}

void ResumeClock(Store& store, PlatformClock& clock)
{
    Store::Transaction transaction(store);
    if (const auto kept = transaction.Read(kOwnCollection, kClock)) {
        clock.Advance(AsInt(Member(ParseOwn(*kept), "aheadMs")));
    }
}

bool IsToken(const std::string& token)
{
    return token.size() >= 16 && token.size() <= 128 &&
           token.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.~") ==
               std::string::npos;
}

std::string AddressText(const std::string& address, std::uint16_t port)
{
    const bool six = address.find(':') != std::string::npos;
    return (six ? "[" + address + "]" : address) + ":" + std::to_string(port);
}

} // namespace

std::string ToLine(const Served& exchange)
{
    const CivilTime at = ToCivil(exchange.timeMs);
    char time[96];
    std::snprintf(time, sizeof time, "%04d-%02d-%02d %02d:%02d:%02d.%03d", at.year, at.month, at.day, at.hour,
                  at.minute, at.second, at.millisecond);
    char taken[32];
    std::snprintf(taken, sizeof taken, "%.1f", exchange.milliseconds);
    return std::string(time) + " " + exchange.verb + " " + exchange.path + " " + std::to_string(exchange.status) + " " +
           exchange.code + " " + std::to_string(exchange.requestBytes) + "/" + std::to_string(exchange.answerBytes) +
           " B " + taken + " ms";
}

class Platform::Impl {
public:
    explicit Impl(Options options) : options_(std::move(options))
    {
        options_.threads = std::clamp(options_.threads, 1u, 64u);
        if (!options_.now) {
            options_.now = SystemNow;
        }
    }

    bool Start(std::string& error)
    {
        if (server_ != nullptr) {
            error = "the platform is running";
            return false;
        }
        if (!(options_.timeScale > 0.0)) {
            error = "the time scale must be more than 0";
            return false;
        }
        if (!(options_.alarmsPerMinute >= 0.0)) {
            error = "the rate of alarms must not be less than 0";
            return false;
        }
        if (!options_.token.empty() && !IsToken(options_.token)) {
            error = "the token is 16 to 128 letters, digits, \"-\", \"_\", \".\" and \"~\"";
            return false;
        }
        if (options_.token.empty() && !IsLoopbackAddress(options_.address)) {
            error = "listening on " + options_.address + " needs a token: others than this machine can reach it";
            return false;
        }
        try {
            clock_ = std::make_unique<PlatformClock>(options_.now);
            description_ = std::make_unique<Description>(EmbeddedDocument(), EmbeddedResources());
            store_ = std::make_unique<Store>();
            store_->Open(options_.databasePath);
            ResumeClock(*store_, *clock_);
            Services services;
            const std::shared_ptr<const Cipher> cipher = MakeCipher(*store_);
            AddEncryption(services, cipher);
            AddDownloads(services, options_.timeScale);
            AddDeviceChannel(services, *description_,
                             {{"radar", Radars(options_.timeScale)}, {"releaseServer", AskReleaseServer}},
                             options_.timeScale);
            AddDeviceTexts(services);
            AddDevices(services, cipher, options_.timeScale);
            AddControls(services, options_.timeScale);
            AddAlarms(services, options_.alarmsPerMinute);
            AddJobs(services, options_.timeScale);
            AddFiles(services);
            AddAttendance(services, options_.timeScale);
            AddStatistics(services);
            AddPersonnel(services);
            AddCredentials(services);
            AddPersonGroups(services);
            AddPersonJobs(services, options_.timeScale);
            AddVisitors(services, options_.timeScale);
            AddGroups(services);
            AddLog(services);
            AddTopology(services, options_.timeScale);
            AddUsers(services, cipher);
            AddVideo(services);
            AddRelease(services, options_.timeScale);
            AddMaps(services);
            PrepareLog(*store_);
            engine_ = std::make_unique<Engine>(
                *description_, *store_, [this] { return clock_->Now(); }, std::move(services), NoteInLog);
            const auto seed = [this, cipher] {
                SeedUsers(*store_, *cipher);
                engine_->Seed();
                EquipDevices(*store_);
            };
            seed();
            workbench_ = std::make_unique<simulator::Workbench>(simulator::Workbench::Parts{
                *description_, *store_, *clock_, seed, [this] { KeepClock(*store_, *clock_); }, options_.openApi,
                options_.databasePath, NEXWIRE_VERSION});
            site_ = std::make_unique<Site>(Site{*store_, *clock_, *workbench_});
        } catch (const std::exception& failure) {
            error = failure.what();
            Stop();
            return false;
        }
        try {
            guard_ = std::make_unique<const Guard>(options_.address, options_.token);
            auto server = std::make_unique<HttpServer>(
                HttpServer::Settings{options_.address, options_.port, options_.threads, options_.bodyLimit,
                                     options_.idleSeconds},
                [this](const Request& request) { return Handle(request); },
                [this](HttpServer::Done&& done) { Observe(std::move(done)); });
            server->Start();
            port_ = server->Port();
            server_ = std::move(server);
        } catch (const std::exception& failure) {
            error = "cannot listen on " + AddressText(options_.address, options_.port) + ": " + failure.what();
            Stop();
            return false;
        }
        return true;
    }

    void Stop()
    {
        server_.reset();
        port_ = 0;
        if (workbench_ != nullptr && clock_->Scale() != 1.0) {
            KeepClock(*store_, *clock_);
        }
        site_.reset();
        workbench_.reset();
        engine_.reset();
        store_.reset();
        description_.reset();
    }

    std::uint16_t Port() const { return port_; }
    std::uint64_t Count() const { return count_; }
    Site* Shared() { return port_ == 0 ? nullptr : site_.get(); }

    WorkbenchAnswer Ask(const std::string& verb, const std::string& target, const std::string& body)
    {
        if (port_ == 0) {
            return {};
        }
        Request request;
        request.verb = verb;
        request.path = target.substr(0, target.find('?'));
        request.query = target.size() > request.path.size() ? target.substr(request.path.size() + 1) : std::string();
        request.body = body;
        if (request.path.empty() || request.path.front() != '/') {
            request.path.insert(0, "/_workbench/");
        }
        Answer answer = workbench_->Handle(request, Server());
        return answer.stream ? WorkbenchAnswer{405, R"({"error":"events need a connection"})"}
                             : WorkbenchAnswer{answer.status, std::move(answer.body)};
    }

private:
    std::string Server() const
    {
        const bool everywhere = options_.address == "0.0.0.0" || options_.address == "::";
        return "http://" + AddressText(everywhere ? "127.0.0.1" : options_.address, port_);
    }

    Answer Handle(const Request& request)
    {
        while (port_ == 0) {
            std::this_thread::yield(); // The port is open a moment before it is known.
        }
        if (auto refused = guard_->Refuse(request, port_)) {
            return std::move(*refused);
        }
        if (simulator::Workbench::Owns(request.path)) {
            Answer answer = workbench_->Handle(request, Server());
            answer.fields += guard_->Cookie(request);
            return answer;
        }
        return workbench_->Serve(
            request, [&] { return engine_->Handle(request); },
            [](const std::string& code) { return RefuseWith(code, "refused by a rule for faults"); });
    }

    void Observe(HttpServer::Done&& done)
    {
        if (simulator::Workbench::Owns(done.request.path)) {
            return;
        }
        ++count_;
        if (options_.onExchange) {
            const std::lock_guard<std::mutex> lock(observing_);
            options_.onExchange(ToServed(done, clock_->Now()));
        }
        workbench_->Observe(std::move(done), false);
    }

    Options options_;
    std::unique_ptr<PlatformClock> clock_;
    std::unique_ptr<Description> description_;
    std::unique_ptr<Store> store_;
    std::unique_ptr<Engine> engine_;
    std::unique_ptr<simulator::Workbench> workbench_;
    std::unique_ptr<Site> site_;
    std::unique_ptr<const Guard> guard_;
    std::unique_ptr<HttpServer> server_;
    std::atomic<std::uint16_t> port_{0};
    std::atomic<std::uint64_t> count_{0};
    std::mutex observing_;
};

Platform::Platform(Options options) : impl_(std::make_unique<Impl>(std::move(options))) {}

Platform::~Platform()
{
    Stop();
}

bool Platform::Start(std::string& error)
{
    return impl_->Start(error);
}

void Platform::Stop()
{
    impl_->Stop();
}

std::uint16_t Platform::Port() const
{
    return impl_->Port();
}

std::uint64_t Platform::ExchangeCount() const
{
    return impl_->Count();
}

WorkbenchAnswer Platform::Workbench(const std::string& verb, const std::string& target, const std::string& body)
{
    return impl_->Ask(verb, target, body);
}

Site* Platform::Shared()
{
    return impl_->Shared();
}

} // namespace nexwire::simulator

#include "simulator/Platform.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <mutex>

#include "src/Clock.h"
#include "src/HttpServer.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr std::string_view kOwn = "_platform";

std::int64_t SystemNow()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

// A database keeps its key, so that what was encrypted before a restart can be read after it.
std::shared_ptr<const Cipher> MakeCipher(Store& store)
{
    Store::Transaction transaction(store);
    std::string key = transaction.Read(kOwn, "cipherKey").value_or("");
    if (key.empty()) {
        key = Cipher::NewKey();
        transaction.Write(kOwn, "cipherKey", key);
    }
    transaction.Commit();
    return std::make_shared<const Cipher>(key);
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
        try {
            description_ = std::make_unique<Description>(EmbeddedDocument(), EmbeddedResources());
            store_ = std::make_unique<Store>();
            store_->Open(options_.databasePath);
            Services services;
            const std::shared_ptr<const Cipher> cipher = MakeCipher(*store_);
            AddEncryption(services, cipher);
            AddDownloads(services, options_.timeScale);
            AddDeviceChannel(services, *description_);
            AddDeviceTexts(services);
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
            SeedUsers(*store_, *cipher);
            PrepareLog(*store_);
            engine_ = std::make_unique<Engine>(*description_, *store_, options_.now, std::move(services), NoteInLog);
            engine_->Seed();
        } catch (const std::exception& failure) {
            error = failure.what();
            Stop();
            return false;
        }
        try {
            auto server = std::make_unique<HttpServer>(
                HttpServer::Settings{options_.port, options_.threads, options_.bodyLimit, options_.idleSeconds},
                [this](const Request& request) { return engine_->Handle(request); },
                [this](const HttpServer::Done& done) { Observe(done); });
            server->Start();
            port_ = server->Port();
            server_ = std::move(server);
        } catch (const std::exception& failure) {
            error = "cannot listen on 127.0.0.1:" + std::to_string(options_.port) + ": " + failure.what();
            Stop();
            return false;
        }
        return true;
    }

    void Stop()
    {
        server_.reset();
        port_ = 0;
        engine_.reset();
        store_.reset();
        description_.reset();
    }

    std::uint16_t Port() const { return port_; }
    std::uint64_t Count() const { return count_; }

private:
    void Observe(const HttpServer::Done& done)
    {
        ++count_;
        if (options_.onExchange) {
            const std::lock_guard<std::mutex> lock(observing_);
            options_.onExchange({options_.now(), done.verb, done.target, done.status, done.code, done.requestBytes,
                                 done.answerBytes, done.milliseconds});
        }
    }

    Options options_;
    std::unique_ptr<Description> description_;
    std::unique_ptr<Store> store_;
    std::unique_ptr<Engine> engine_;
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

} // namespace nexwire::simulator

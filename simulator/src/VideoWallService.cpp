#include "simulator/VideoWallService.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <mutex>
#include <thread>

#include "src/HttpServer.h"
#include "src/Services.h"
#include "src/Shape.h"
#include "src/Site.h"
#include "src/VideoWallState.h"

namespace nexwire::simulator {
namespace {

std::int64_t SystemNow()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

constexpr const char* kAddress = "127.0.0.1";
constexpr const char* kWall = "wall"; // The one document of its collection.

Answer Envelope(unsigned status, int code, std::string_view message, Document& data)
{
    Document envelope(rapidjson::kObjectType, &data.GetAllocator());
    SetMember(envelope, "code", Json(code), envelope.GetAllocator());
    SetMember(envelope, "module", Json(code / 1000), envelope.GetAllocator());
    SetMember(envelope, "msg", MakeText(message, envelope.GetAllocator()), envelope.GetAllocator());
    SetMember(envelope, "data", Json(std::move(static_cast<Json&>(data))), envelope.GetAllocator());
    Answer answer;
    answer.status = status;
    answer.code = std::to_string(code);
    answer.message = message;
    answer.body = PrintJson(envelope);
    return answer;
}

Answer Refuse(unsigned status, WallCode code, std::string_view message)
{
    Document none(rapidjson::kObjectType);
    return Envelope(status, static_cast<int>(code), message, none);
}

} // namespace

class VideoWallService::Impl {
public:
    explicit Impl(Options options) : options_(std::move(options)), ownClock_(!options_.now)
    {
        options_.threads = std::clamp(options_.threads, 1u, 64u);
    }

    bool Start(std::string& error)
    {
        if (server_ != nullptr) {
            error = "the video wall service is running";
            return false;
        }
        if (!(options_.timeScale > 0.0) || options_.outputs < 1 || options_.rows < 1 || options_.cols < 1) {
            error = "the time scale must be more than 0, outputs, rows and columns at least 1";
            return false;
        }
        try {
            library_ = std::make_unique<Wire>(EmbeddedDocument());
            bodies_ = library_->Direct();
            site_ = options_.platform == nullptr ? nullptr : options_.platform->Shared();
            if (options_.platform != nullptr && site_ == nullptr) {
                error = "the platform that the video wall belongs to is not running";
                return false;
            }
            if (ownClock_) {
                options_.now = site_ == nullptr ? std::function<std::int64_t()>(SystemNow)
                                                : [clock = &site_->clock] { return clock->Now(); };
            }
            state_ = std::make_unique<VideoWallState>(options_);
            if (site_ != nullptr) {
                Resume();
                site_->workbench.OnReset([this] { BeginAnew(); });
            }
            auto server = std::make_unique<HttpServer>(
                HttpServer::Settings{kAddress, options_.port, options_.threads, options_.bodyLimit,
                                     options_.idleSeconds},
                [this](const Request& request) { return Answered(request); },
                [this](HttpServer::Done&& done) { Observe(std::move(done)); });
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
        if (site_ != nullptr) {
            site_->workbench.OnReset({});
            site_ = nullptr;
        }
        state_.reset();
    }

    std::uint16_t Port() const { return port_; }

private:
    Answer Answered(const Request& request)
    {
        while (port_ == 0) {
            std::this_thread::yield(); // The port is open a moment before it is known.
        }
        if (auto refused = guard_.Refuse(request, port_)) {
            return std::move(*refused);
        }
        if (site_ == nullptr) {
            return Handle(request);
        }
        return site_->workbench.Serve(
            request, [&] { return Handle(request); },
            [](const std::string& code) {
                Document none(rapidjson::kObjectType);
                return Envelope(200, std::atoi(code.c_str()), "refused by a rule for faults", none);
            });
    }

    void Resume()
    {
        Store::Transaction transaction(site_->store);
        kept_ = transaction.Read(kWallCollection, kWall).value_or("");
        if (!kept_.empty()) {
            state_->Load(ParseOwn(kept_));
        }
    }

    void BeginAnew()
    {
        const std::lock_guard<std::mutex> lock(working_);
        state_ = std::make_unique<VideoWallState>(options_);
        kept_.clear();
    }

    // Before the answer, so that nothing that was answered is lost.
    void Keep()
    {
        Document wall;
        const Json saved = state_->Save(wall.GetAllocator());
        std::string text = PrintJson(saved);
        if (text != kept_) {
            Store::Transaction transaction(site_->store);
            transaction.Write(kWallCollection, kWall, text);
            transaction.Commit();
            kept_ = std::move(text);
        }
    }

    Answer Handle(const Request& request)
    {
        try {
            Document body(rapidjson::kObjectType);
            std::string error;
            if (request.verb != "POST") {
                return Refuse(405, WallCode::kWrongVerb, WallText(WallCode::kWrongVerb));
            }
            if (!request.body.empty() && !ParseJson(body, request.body, error)) {
                throw WallRefusal(WallCode::kNotJson, error);
            }
            if (!body.IsObject()) {
                throw WallRefusal(WallCode::kNotJson);
            }
            const auto shape = bodies_.find(request.path);
            if (shape != bodies_.end()) {
                CheckShape(*shape->second, body, "body", Strictness::kWhole);
            }
            WallOutput output;
            const std::lock_guard<std::mutex> lock(working_);
            state_->Handle(request.path, WallInput(body), output);
            if (site_ != nullptr) {
                Keep();
            }
            return Envelope(200, 0, "", output.Data());
        } catch (const WallRefusal& refusal) {
            return Refuse(refusal.Code() == WallCode::kUnknownPath ? 404 : 200, refusal.Code(), refusal.what());
        } catch (const Refusal& refusal) {
            return Refuse(200, WallCode::kMissingKey, refusal.what());
        } catch (const std::exception&) {
            return Refuse(500, WallCode::kInternal, WallText(WallCode::kInternal));
        }
    }

    void Observe(HttpServer::Done&& done)
    {
        if (options_.onExchange) {
            const std::lock_guard<std::mutex> lock(observing_);
            options_.onExchange(ToServed(done, options_.now()));
        }
        if (site_ != nullptr) {
            site_->workbench.Observe(std::move(done), true);
        }
    }

    Options options_;
    const bool ownClock_;
    const Guard guard_{kAddress, ""};
    Site* site_ = nullptr;
    std::string kept_; ///< The wall as it stands in the database.
    std::unique_ptr<Wire> library_;
    std::map<std::string, const WireStructure*, std::less<>> bodies_;
    std::unique_ptr<VideoWallState> state_;
    std::unique_ptr<HttpServer> server_;
    std::atomic<std::uint16_t> port_{0};
    std::mutex working_;
    std::mutex observing_;
};

VideoWallService::VideoWallService() : VideoWallService(Options()) {}

VideoWallService::VideoWallService(Options options) : impl_(std::make_unique<Impl>(std::move(options))) {}

VideoWallService::~VideoWallService()
{
    Stop();
}

bool VideoWallService::Start(std::string& error)
{
    return impl_->Start(error);
}

void VideoWallService::Stop()
{
    impl_->Stop();
}

std::uint16_t VideoWallService::Port() const
{
    return impl_->Port();
}

} // namespace nexwire::simulator

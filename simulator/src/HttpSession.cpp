#include "src/HttpSession.h"

#include <array>
#include <chrono>
#include <functional>
#include <ostream> // Boost writes to one that it does not include.

#include <boost/beast/http/status.hpp>

#include "src/HttpReader.h"

namespace nexwire::simulator {
namespace {

namespace http = boost::beast::http;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kDrops = 16; // Of an answer that drips.
constexpr std::chrono::milliseconds kStreamStep(50);

// One connection. All its handlers run on its strand, so it needs no lock.
class Session : public std::enable_shared_from_this<Session> {
public:
    Session(std::shared_ptr<HttpConnection> connection, const HttpShared& shared)
        : connection_(std::move(connection)), shared_(shared), reader_(shared.settings.bodyLimit)
    {
    }

    void Read()
    {
        reader_.Begin();
        connection_->Limit(std::chrono::seconds(shared_.settings.idleSeconds));
        Feed();
    }

private:
    void Feed()
    {
        switch (reader_.Read()) {
        case HttpReader::State::kMore: {
            const auto [room, size] = reader_.Room();
            connection_->ReadSome(room, size, [self = shared_from_this()](bool good, std::size_t came) {
                self->reader_.Came(came);
                good ? self->Feed() : self->Close();
            });
            break;
        }
        case HttpReader::State::kContinues:
            Write("HTTP/1.1 100 Continue\r\n\r\n", "", [this] { Feed(); });
            break;
        case HttpReader::State::kWhole:
            Handle();
            break;
        case HttpReader::State::kTooLarge:
            Broken(413, Reason::kBodyTooLarge);
            break;
        case HttpReader::State::kMalformed:
            Broken(400, Reason::kMalformedHttp);
            break;
        }
    }

    void Write(std::string head, std::string_view body, std::function<void()> then)
    {
        head_ = std::move(head);
        connection_->Write(head_, body, [self = shared_from_this(), then = std::move(then)](bool good, std::size_t) {
            if (good) {
                then();
            }
        });
    }

    void Wait(Clock::duration time, std::function<void()> then)
    {
        connection_->Wait(time, [self = shared_from_this(), then = std::move(then)] { then(); });
    }

    void Handle()
    {
        begin_ = Clock::now();
        connection_->Unlimit();
        reader_.Take(done_.request, done_.target);
        keepAlive_ = reader_.KeepsAlive();
        answer_ = shared_.handler(done_.request);
        if (done_.request.verb == "HEAD") {
            answer_.body.clear();
        }
        if (answer_.delayMs > 0 && answer_.damage != Damage::kDrip) {
            Wait(std::chrono::milliseconds(answer_.delayMs), [this] { Send(); });
        } else {
            Send();
        }
    }

    // The peer said something that is not HTTP, or too much of it.
    void Broken(unsigned status, Reason reason)
    {
        answer_ = RefuseOutright(status, reason, reader_.Problem());
        reader_.Take(done_.request, done_.target);
        begin_ = Clock::now();
        keepAlive_ = false;
        Send();
    }

    void Send()
    {
        const auto field = [](const char* name, const std::string& value) {
            return value.empty() ? std::string() : std::string(name) + ": " + value + "\r\n";
        };
        const bool streams = static_cast<bool>(answer_.stream);
        const bool closes = !keepAlive_ || streams || answer_.damage == Damage::kTorn;
        body_ = std::make_shared<const std::string>(std::move(answer_.body));
        std::string head = "HTTP/1.1 " + std::to_string(answer_.status) + " " +
                           std::string(http::obsolete_reason(static_cast<http::status>(answer_.status))) + "\r\n" +
                           field("Content-Type", answer_.type) + field("Content-Range", answer_.range) +
                           answer_.fields + field("Connection", closes ? "close" : "") +
                           (streams ? std::string() : field("Content-Length", std::to_string(body_->size()))) + "\r\n";
        const Damage damage = answer_.damage;
        Tell(head);
        connection_->Limit(std::chrono::seconds(shared_.settings.idleSeconds)); // A delay may have taken longer.
        if (damage == Damage::kResetBefore) {
            connection_->Reset();
        } else if (streams) {
            connection_->Unlimit();
            Write(std::move(head), {}, [this] { Go(); });
        } else if (damage == Damage::kDrip) {
            connection_->Unlimit();
            Write(std::move(head), {}, [this] { Drip(0); });
        } else if (damage == Damage::kTorn) {
            Write(std::move(head), std::string_view(*body_).substr(0, body_->size() / 2), [this] { Close(); });
        } else if (damage == Damage::kResetAfter) {
            // What is still on its way would be lost with the connection.
            Write(std::move(head), *body_,
                  [this] { Wait(std::chrono::milliseconds(20), [this] { connection_->Reset(); }); });
        } else {
            Write(std::move(head), *body_, [this] { keepAlive_ ? Read() : Close(); });
        }
    }

    void Tell(const std::string& head)
    {
        done_.requestBytes = done_.request.body.size();
        done_.sent = std::make_shared<const std::string>(std::move(done_.request.body));
        done_.answer = body_;
        done_.head = head;
        done_.status = answer_.status;
        done_.code = std::move(answer_.code);
        done_.message = std::move(answer_.message);
        done_.type = std::move(answer_.type);
        done_.fault = std::move(answer_.fault);
        done_.answerBytes = body_->size();
        done_.milliseconds = std::chrono::duration<double, std::milli>(Clock::now() - begin_).count();
        shared_.observer(std::move(done_));
    }

    // One piece after the other, spread over the time of the delay.
    void Drip(std::size_t drop)
    {
        if (drop == kDrops) {
            keepAlive_ ? Read() : Close();
            return;
        }
        const std::size_t begin = body_->size() * drop / kDrops;
        const std::size_t end = body_->size() * (drop + 1) / kDrops;
        Wait(std::chrono::milliseconds(answer_.delayMs) / kDrops, [this, begin, end, drop] {
            Write({}, std::string_view(*body_).substr(begin, end - begin), [this, drop] { Drip(drop + 1); });
        });
    }

    // Asks what there is to say and says it, until nobody listens.
    void Go()
    {
        std::string more;
        if (!answer_.stream(more)) {
            Close();
        } else if (more.empty()) {
            Wait(kStreamStep, [this] { Go(); });
        } else {
            Write(std::move(more), {}, [this] { Wait(kStreamStep, [this] { Go(); }); });
        }
    }

    // Says goodbye and reads what still comes for a moment: closing with unread bytes would reset the connection
    // before the peer has read the answer.
    void Close()
    {
        connection_->FinishSending();
        connection_->Limit(std::chrono::seconds(2));
        Drain();
    }

    void Drain()
    {
        connection_->ReadSome(rest_.data(), rest_.size(), [self = shared_from_this()](bool good, std::size_t) {
            if (good) {
                self->Drain();
            }
        });
    }

    const std::shared_ptr<HttpConnection> connection_;
    const HttpShared& shared_;
    HttpReader reader_;
    bool keepAlive_ = false;
    Clock::time_point begin_;
    Answer answer_;
    HttpServer::Done done_; ///< Of the request that is being answered.
    std::string head_;      ///< Of the answer that is going out, like the body.
    std::shared_ptr<const std::string> body_;
    std::array<char, 4096> rest_{};
};

} // namespace

void Serve(std::shared_ptr<HttpConnection> connection, const HttpShared& shared)
{
    std::make_shared<Session>(std::move(connection), shared)->Read();
}

} // namespace nexwire::simulator

#include "nexwire/host/ExchangeRecorder.h"

#include <atomic>
#include <chrono>
#include <ctime>
#include <deque>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "ExchangeFile.h"
#include "HostFailure.h"
#include "Secrets.h"
#include <keel/PrivateFile.h>

namespace nexwire::host {

namespace {

namespace fs = std::filesystem;

/// Now in UTC, to the millisecond: "2024-05-06T07:08:09.123Z".
std::string Timestamp()
{
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm parts = {};
#if defined(_WIN32)
    gmtime_s(&parts, &seconds);
#else
    gmtime_r(&seconds, &parts);
#endif
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts);
    const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    const std::string digits = std::to_string(1000 + rest);
    return std::string(text) + '.' + digits.substr(1) + 'Z';
}

std::ofstream OpenToAppend(const std::string& file)
{
    std::ofstream stream;
    if (Keel::MakePrivateFile(file)) {
        stream.open(fs::u8path(file), std::ios::binary | std::ios::app);
    } else {
        stream.setstate(std::ios::failbit);
    }
    return stream;
}

} // namespace

struct RecordingExecutor::State {
    State(std::unique_ptr<IRequestExecutor> given, const std::string& file)
        : inner(std::move(given)), stream(OpenToAppend(file)), good(stream.good())
    {
    }

    void Append(const std::string& line)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        stream.clear(); // A full disk may have room again.
        if (!stream.write(line.data(), static_cast<std::streamsize>(line.size())).flush()) {
            good = false;
        }
    }

    const std::unique_ptr<IRequestExecutor> inner;
    std::mutex mutex;
    std::ofstream stream;
    std::atomic<bool> good;
};

RecordingExecutor::RecordingExecutor(std::unique_ptr<IRequestExecutor> inner, const std::string& file)
    : state_(new State(std::move(inner), file))
{
}

RecordingExecutor::~RecordingExecutor() = default;

bool RecordingExecutor::Good() const
{
    return state_->good;
}

IRequestExecutor& RecordingExecutor::Inner()
{
    return *state_->inner;
}

bool RecordingExecutor::Execute(RspInfos& response, const RequestParams& request, int flag)
{
    const auto begin = std::chrono::steady_clock::now();
    const bool answered = state_->inner->Execute(response, request, flag);
    const auto elapsed =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin).count();
    try {
        const Keel::Error::ErrorCode error = answered ? Keel::Error::ErrorCode() : Keel::Error::GetLastError();
        state_->Append(WriteExchange(request, response, answered, error, Timestamp(), elapsed));
    } catch (const std::exception&) {
        state_->good = false;
    }
    return answered;
}

struct ReplayExecutor::State {
    using Key = std::pair<std::int32_t, std::string>; ///< Method code and path.
    using Queue = std::deque<std::size_t>;            ///< Positions in `exchanges`, used ones among them.

    struct Bucket {
        Queue all;
        std::map<std::string, Queue> byBody;
        std::size_t recorded = 0;
        const RecordedExchange* last = nullptr;
    };

    State(const std::string& given, WhenUsedUp when) : file(given), whenUsedUp(when) { problem = Load(); }

    std::string Load()
    {
        std::ifstream stream(fs::u8path(file), std::ios::binary);
        if (!stream) {
            return "cannot read " + file;
        }
        std::string line;
        for (std::size_t number = 1; std::getline(stream, line); ++number) {
            if (line.find_first_not_of(" \t\r") == std::string::npos) {
                continue;
            }
            RecordedExchange exchange;
            std::string reason;
            if (ReadExchange(line, exchange, reason)) {
                exchanges.push_back(std::move(exchange));
            } else if (!stream.eof()) { // Without its line end it was cut off.
                return file + ", line " + std::to_string(number) + ": " + reason;
            }
        }
        if (stream.bad()) {
            return "cannot read " + file;
        }
        used.resize(exchanges.size(), false);
        for (std::size_t i = 0; i < exchanges.size(); ++i) {
            Bucket& bucket = buckets[Key(exchanges[i].method, exchanges[i].path)];
            bucket.all.push_back(i);
            bucket.byBody[exchanges[i].body].push_back(i);
            ++bucket.recorded;
        }
        return std::string();
    }

    /// The first unused exchange of the queue, which thereby is used; null when there is none.
    const RecordedExchange* TakeFirst(Queue& queue)
    {
        while (!queue.empty()) {
            const std::size_t i = queue.front();
            queue.pop_front();
            if (!used[i]) {
                used[i] = true;
                return &exchanges[i];
            }
        }
        return nullptr;
    }

    const RecordedExchange* Take(Bucket& bucket, const std::string& body)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        const RecordedExchange* found = nullptr;
        const auto same = bucket.byBody.find(body);
        if (same != bucket.byBody.end()) {
            found = TakeFirst(same->second);
        }
        if (found == nullptr) {
            found = TakeFirst(bucket.all);
        }
        if (found != nullptr) {
            bucket.last = found;
        }
        return found != nullptr || whenUsedUp == WhenUsedUp::Fail ? found : bucket.last;
    }

    bool Answer(RspInfos& response, const RequestParams& request)
    {
        if (!problem.empty()) {
            return Fail(HostError::FileFailed, "replay: " + problem);
        }
        const auto name = [&request] {
            return "replay: method code " + std::to_string(request.method) + ", path " +
                   Printable(WithoutSecrets(request.url), 200);
        };
        const auto bucket = buckets.find(Key(request.method, WithoutSecrets(request.url)));
        if (bucket == buckets.end()) {
            return Fail(HostError::NothingRecorded, name() + ": not in " + file);
        }
        const RecordedExchange* const found = Take(bucket->second, WithoutSecrets(request.body));
        if (found == nullptr) {
            return Fail(HostError::NothingRecorded, name() + ": all " + std::to_string(bucket->second.recorded) +
                                                        " exchanges in " + file + " are used up");
        }
        response = found->response;
        if (!found->answered) {
            Keel::Error::SetLastError(found->error);
        }
        return found->answered;
    }

    const std::string file;
    const WhenUsedUp whenUsedUp;
    std::string problem;
    std::vector<RecordedExchange> exchanges;
    std::map<Key, Bucket> buckets; ///< Its shape does not change after construction.
    std::mutex mutex;              ///< Guards `used` and the contents of the buckets.
    std::vector<bool> used;
};

ReplayExecutor::ReplayExecutor(const std::string& file, WhenUsedUp whenUsedUp) : state_(new State(file, whenUsedUp)) {}

ReplayExecutor::~ReplayExecutor() = default;

bool ReplayExecutor::Valid() const
{
    return state_->problem.empty();
}

const std::string& ReplayExecutor::Problem() const
{
    return state_->problem;
}

std::size_t ReplayExecutor::Size() const
{
    return state_->exchanges.size();
}

bool ReplayExecutor::Execute(RspInfos& response, const RequestParams& request, int)
{
    response.headers.clear();
    response.body.clear();
    try {
        return state_->Answer(response, request);
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace nexwire::host

#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include <keel/Error.h>

#include "nexwire/Nexwire.h"

namespace test {

/// What the executor of the running test saw and answers; safe from any thread.
struct Wire {
    /// One scripted answer; without any the executor answers `otherwise`.
    struct Answer {
        std::string body;
        bool success = true;
        std::map<std::string, std::string> headers;
    };

    std::vector<nexwire::RequestParams> requests;
    std::deque<Answer> answers;
    std::string otherwise = R"({"code":"0-0","msg":"","data":{}})";
    int lastFlag = 0;
    bool destroyed = false;
    /// Overrides everything above when set.
    std::function<bool(nexwire::RspInfos&, const nexwire::RequestParams&)> handler;
    std::mutex mutex;

    const nexwire::RequestParams& Last() const { return requests.back(); }
    void AnswerWith(std::string body) { answers.push_back({std::move(body), true, {}}); }
    void Fail() { answers.push_back({std::string(), false, {}}); }
};

class StubExecutor : public nexwire::IRequestExecutor {
public:
    explicit StubExecutor(Wire& wire) : wire_(wire) {}
    ~StubExecutor() override { wire_.destroyed = true; }

    bool Execute(nexwire::RspInfos& response, const nexwire::RequestParams& request, int flag) override
    {
        const std::lock_guard<std::mutex> lock(wire_.mutex);
        wire_.requests.push_back(request);
        wire_.lastFlag = flag;
        if (wire_.handler) {
            return wire_.handler(response, request);
        }
        if (wire_.answers.empty()) {
            response.body = wire_.otherwise;
            return true;
        }
        const Wire::Answer answer = std::move(wire_.answers.front());
        wire_.answers.pop_front();
        response.body = answer.body;
        response.headers = answer.headers;
        if (!answer.success) {
            Keel::Error::SetLastError({7, 28, "stub transport failure"});
        }
        return answer.success;
    }

private:
    Wire& wire_;
};

/// The library initialised with a stub for as long as it lives.
class Library {
public:
    explicit Library(nexwire::IEncryption* encryption = nullptr)
    {
        nexwire::NexwireInitParams params;
        params.executor = new StubExecutor(wire);
        params.encryption = encryption;
        nexwire::NexwireInit(params);
    }
    ~Library() { nexwire::NexwireUnInit(); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    Wire wire;
};

/// Identifiers that a careless path would change or refuse.
inline const std::vector<std::string>& HostileIds()
{
    static const std::vector<std::string> ids = {"8c1f0f6e2b8a4f0f9f7c0a9b1d2e3f40",
                                                 "a/b",
                                                 "50%25",
                                                 "a b",
                                                 "\xF0\x9F\x94\x91",
                                                 "12345",
                                                 std::string(40, 'x'),
                                                 ""};
    return ids;
}

} // namespace test

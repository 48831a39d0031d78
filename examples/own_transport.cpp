// A client with a transport of its own, here plain libcurl with a handle per thread, and the host kit around it.
// Shows what an executor has to do: the whole request, its time, the whole answer, the reason of a failure in the
// kit's words so that RetryingExecutor knows what may be repeated, and an early end. 0: a group was created; 1: not.

#include <iostream>
#include <memory>
#include <string>
#include <utility>

#include <curl/curl.h>
#include <keel/Error.h>

#include "nexwire/AccessController/AccessGroup.h"
#include "nexwire/LastExchange.h"
#include "nexwire/Nexwire.h"
#include "nexwire/host/CallScope.h"
#include "nexwire/host/HostError.h"
#include "nexwire/host/MakeExecutor.h"

namespace {

namespace host = nexwire::host;

class OwnTransport : public nexwire::IRequestExecutor {
public:
    explicit OwnTransport(std::string address) : address_(std::move(address)) {}

    bool Execute(nexwire::RspInfos& response, const nexwire::RequestParams& request, int /*flag*/) override
    {
        response = nexwire::RspInfos();
        CURL* const easy = Handle();
        if (easy == nullptr || request.method < 0 || request.method > 3) {
            return Fail(host::HostError::RequestRefused, "no handle, or a method code without a verb");
        }
        static const char* const kVerbs[] = {"GET", "PUT", "POST", "DELETE"};
        curl_slist* fields = curl_slist_append(nullptr, "Content-Type: application/json");
        for (const auto* entries : {&request.headers, &request.params}) {
            for (const auto& [name, value] : *entries) {
                fields = curl_slist_append(fields, (name + ": " + value).c_str());
            }
        }
        const std::string url = address_ + request.url;
        curl_easy_reset(easy); // Options go, the connection stays.
        curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
        curl_easy_setopt(easy, CURLOPT_PATH_AS_IS, 1L);
        curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(easy, CURLOPT_POSTFIELDS, request.body.data());
        curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE, static_cast<long>(request.body.size()));
        curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, kVerbs[request.method]);
        curl_easy_setopt(easy, CURLOPT_HTTPHEADER, fields);
        curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(request.timeoutMs));
        curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &Take);
        curl_easy_setopt(easy, CURLOPT_WRITEDATA, &response.body);
        curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
        curl_easy_setopt(easy, CURLOPT_XFERINFOFUNCTION, &IsOver);
        const CURLcode code = curl_easy_perform(easy);
        curl_slist_free_all(fields);
        long status = 0;
        curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
        if (code == CURLE_OK && status >= 200 && status < 300) {
            return true;
        }
        if (code == CURLE_OK) {
            Keel::Error::SetLastError({host::kHttpStatusCategory, static_cast<std::int32_t>(status), "status"});
            return false;
        }
        response = nexwire::RspInfos();
        return Fail(ErrorOf(code), curl_easy_strerror(code));
    }

private:
    static CURL* Handle()
    {
        thread_local const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> handle(curl_easy_init(),
                                                                                      &curl_easy_cleanup);
        return handle.get();
    }

    static std::size_t Take(char* data, std::size_t size, std::size_t count, void* body)
    {
        static_cast<std::string*>(body)->append(data, size * count);
        return size * count;
    }

    /// Asked about once a second; a transport that is to end sooner has a `CancelWatch` wake it.
    static int IsOver(void*, curl_off_t, curl_off_t, curl_off_t, curl_off_t)
    {
        const host::CallScope* const scope = host::CallScope::Current();
        return scope != nullptr && scope->Cancelled() ? 1 : 0;
    }

    static host::HostError ErrorOf(CURLcode code)
    {
        switch (code) {
        case CURLE_COULDNT_RESOLVE_HOST:
            return host::HostError::ResolveFailed;
        case CURLE_COULDNT_CONNECT:
            return host::HostError::ConnectFailed; // Never sent: everything may be repeated.
        case CURLE_OPERATION_TIMEDOUT:
            return host::HostError::DeadlinePassed;
        case CURLE_ABORTED_BY_CALLBACK:
            return host::HostError::Aborted;
        default:
            return host::HostError::AnswerIncomplete; // It may have been carried out.
        }
    }

    static bool Fail(host::HostError error, const std::string& text)
    {
        Keel::Error::SetLastError({host::kHostErrorCategory, static_cast<std::int32_t>(error), text});
        return false;
    }

    const std::string address_;
};

} // namespace

int main(int argc, char** argv)
{
    curl_global_init(CURL_GLOBAL_DEFAULT);
    host::ExecutorOptions parts;
    parts.retry = host::RetryOptions();
    parts.trace = [](const host::TraceStep& step) { std::cout << "  " << step.part << ": " << step.text << '\n'; };
    nexwire::NexwireInitParams params;
    params.executor =
        host::MakeExecutor(std::make_unique<OwnTransport>(argc > 1 ? argv[1] : "http://127.0.0.1:8080"), parts)
            .release();
    nexwire::NexwireInit(params);

    const host::CallScope scope("own transport", 5000);
    protocol::AccessGroupAddParam group;
    group.name = "Night shift";
    std::string guid;
    int code = 0;
    const bool created = nexwire::CAccessGroupComm::addAccessGroup(group, guid, code) && !guid.empty();
    std::cout << (created ? "created " + guid : "failed: " + Keel::Error::GetLastError().text) << '\n';
    nexwire::NexwireUnInit();
    return created ? 0 : 1;
}

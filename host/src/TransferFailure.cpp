#include "TransferFailure.h"

#include <cstring>
#include <system_error>

#include "HostFailure.h"
#include "Secrets.h"

namespace nexwire {
namespace host {

namespace {

std::string ReasonOf(long systemError)
{
    return std::error_code(static_cast<int>(systemError), std::system_category()).message();
}

// libcurl's words for a failure.
std::string Detail(CURLcode result, const Connection& connection)
{
    const char* const words = connection.detail[0] != '\0' ? connection.detail : curl_easy_strerror(result);
    return " (" + Printable(words, kQuotedBytes) + ")";
}

// OpenSSL's number of "not looked at", which stands when the chain was good and the name was not.
constexpr long kUnspecified = 1;

bool FailTls(CURLcode result, const Connection& connection, const std::string& name, const std::string& server)
{
    const std::string detail = Detail(result, connection);
    long verify = 0;
    switch (result) {
    case CURLE_PEER_FAILED_VERIFICATION:
        if (curl_easy_getinfo(connection.easy, CURLINFO_SSL_VERIFYRESULT, &verify) == CURLE_OK &&
            verify > kUnspecified) {
            return Fail(HostError::TlsFailed, name + "certificate of " + server + " not trusted" + detail +
                                                  "; give the authority that signed it as caFile");
        }
        return Fail(HostError::TlsFailed, name + "certificate of " + server + " does not fit" + detail);
    case CURLE_SSL_CACERT_BADFILE:
        return Fail(HostError::TlsFailed, name + "caFile cannot be used" + detail);
    case CURLE_SSL_CERTPROBLEM:
        return Fail(HostError::TlsFailed, name + "client certificate or its key cannot be used" + detail);
    default:
        return Fail(HostError::TlsFailed, name + "no TLS with " + server + detail);
    }
}

} // namespace

bool FailTransfer(CURLcode result, const Connection& connection, const std::string& name, const std::string& server)
{
    const std::string detail = Detail(result, connection);
    const std::string received = " after " + std::to_string(connection.exchange.received) + " bytes of the answer";
    long systemError = 0;
    switch (result) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return Fail(HostError::ResolveFailed, name + "name of the server or proxy unknown" + detail);
    case CURLE_COULDNT_CONNECT:
        curl_easy_getinfo(connection.easy, CURLINFO_OS_ERRNO, &systemError);
        return Fail(HostError::ConnectFailed, name + "could not connect to " + server +
                                                  (systemError != 0 ? " (" + ReasonOf(systemError) + ")" : detail) +
                                                  "; is the platform running?");
    case CURLE_PROXY:
        return Fail(HostError::ConnectFailed, name + "the proxy does not lead to " + server + detail);
    case CURLE_SEND_ERROR:
        return Fail(HostError::SendFailed, name + "connection to " + server + " broke while sending" + detail);
    case CURLE_GOT_NOTHING:
        return Fail(HostError::AnswerIncomplete, name + server + " closed the connection without an answer");
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
        if (std::strstr(connection.detail, "alert") != nullptr &&
            std::strstr(connection.detail, "certificate") != nullptr) {
            return Fail(HostError::TlsFailed, name + server + " does not accept our client certificate" + detail);
        }
        return Fail(HostError::AnswerIncomplete, name + "connection to " + server + " broke" + received + detail);
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
        return Fail(HostError::AnswerMalformed, name + "answer of " + server + " is not HTTP/1" + detail);
    case CURLE_OUT_OF_MEMORY:
        return Fail(HostError::OutOfMemory, name + "out of memory" + received);
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
        return FailTls(result, connection, name, server);
    default:
        return Fail(HostError::Internal,
                    name + "libcurl error " + std::to_string(static_cast<int>(result)) + " with " + server + detail);
    }
}

bool FailAnswer(long status, const Connection& connection, const RspInfos& response, const std::string& name,
                const std::string& server)
{
    std::string text = name + "status " + std::to_string(status) + " from " + server;
    char* redirect = nullptr;
    if (status < 400 && curl_easy_getinfo(connection.easy, CURLINFO_REDIRECT_URL, &redirect) == CURLE_OK &&
        redirect != nullptr) {
        const std::string target = redirect;
        text += ", redirect to " + Printable(target.substr(0, target.find('?')), kQuotedBytes) + " not followed";
    }
    if (!response.body.empty()) {
        // A secret that the cut would split is still whole here.
        text += ": " + Printable(WithoutSecrets(response.body.substr(0, kQuotedBytes * 4)), kQuotedBytes);
    }
    return FailStatus(status, text);
}

} // namespace host
} // namespace nexwire

#include "TransferFailure.h"

#include <algorithm>
#include <system_error>

#include "HostFailure.h"
#include "Secrets.h"

namespace nexwire::host {

namespace {

using httpcore::CertificateFault;
using httpcore::Ending;

// libcurl's words for a failure.
std::string Detail(const Connection& connection)
{
    return " (" + Printable(connection.wire.Why(), kQuotedBytes) + ")";
}

// Why nobody accepts connections.
std::string Reason(const Connection& connection)
{
    const long systemError = connection.wire.Info(CURLINFO_OS_ERRNO);
    return systemError == 0
               ? Detail(connection)
               : " (" + std::error_code(static_cast<int>(systemError), std::system_category()).message() + ")";
}

// Without the user and password that may stand in it.
std::string NameOfProxy(const std::string& address)
{
    const std::size_t user = address.rfind('@');
    const std::size_t scheme = address.find("://");
    return address.substr(user != std::string::npos ? user + 1 : scheme != std::string::npos ? scheme + 3 : 0);
}

bool FailTls(const Connection& connection, const Attempt& attempt)
{
    const std::string detail = Detail(connection);
    const std::string certificate = attempt.name + "certificate of " + attempt.server;
    switch (connection.wire.Code()) {
    case CURLE_PEER_FAILED_VERIFICATION:
        switch (connection.wire.Fault()) {
        case CertificateFault::NotYetValid:
            return Fail(HostError::TlsFailed,
                        certificate + " is not valid yet; is the clock of this machine right?" + detail);
        case CertificateFault::Expired:
            return Fail(HostError::TlsFailed,
                        certificate + " has expired, or the clock of this machine is wrong" + detail);
        case CertificateFault::WrongPurpose:
            return Fail(HostError::TlsFailed, certificate + " was made for another purpose than serving" + detail);
        case CertificateFault::Untrusted:
            return Fail(HostError::TlsFailed,
                        certificate + " not trusted" + detail + "; give the authority that signed it as caFile");
        default:
            return Fail(HostError::TlsFailed, certificate + " does not fit" + detail);
        }
    case CURLE_SSL_CACERT_BADFILE:
        return Fail(HostError::TlsFailed, attempt.name + "caFile cannot be used" + detail);
    case CURLE_SSL_CERTPROBLEM:
        return Fail(HostError::TlsFailed, attempt.name + "client certificate or its key cannot be used" + detail);
    default:
        return Fail(HostError::TlsFailed, attempt.name + "no TLS with " + attempt.server + detail);
    }
}

// The way to the server leads through a proxy and ended there.
bool FailAtProxy(const Connection& connection, const Attempt& attempt)
{
    const std::string proxy = NameOfProxy(attempt.options.proxy);
    const long status = connection.wire.Info(CURLINFO_HTTP_CONNECTCODE);
    if (status != 0) {
        return Fail(HostError::ConnectFailed, attempt.name + "the proxy " + proxy + " refused to lead to " +
                                                  attempt.server + " with status " + std::to_string(status) +
                                                  "; nothing was sent to the server");
    }
    if (connection.wire.Code() == CURLE_COULDNT_CONNECT) {
        return Fail(HostError::ConnectFailed, attempt.name + "could not connect to the proxy " + proxy +
                                                  Reason(connection) + "; nothing was sent");
    }
    return Fail(HostError::ConnectFailed, attempt.name + "the proxy " + proxy + " does not lead to " + attempt.server +
                                              Detail(connection) + "; nothing was sent to the server");
}

bool FailLate(const Connection& connection, const Attempt& attempt)
{
    const std::string within = " within " + std::to_string(attempt.allowedMs) + " ms";
    if (connection.wire.Started()) {
        return Fail(HostError::DeadlinePassed, attempt.name + "no complete answer" + within + " (received " +
                                                   std::to_string(connection.wire.Answer().Received()) + " bytes)");
    }
    const std::string none =
        attempt.name + "no connection to " + attempt.server +
        (attempt.options.proxy.empty() ? "" : " through the proxy " + NameOfProxy(attempt.options.proxy));
    return attempt.connectingIsBounded
               ? Fail(HostError::ConnectFailed,
                      none + " within " + std::to_string(attempt.options.connectTimeoutMs) + " ms")
               : Fail(HostError::DeadlinePassed, none + within);
}

// A transfer that libcurl ended for a reason of its own.
bool FailOtherwise(const Connection& connection, const Attempt& attempt)
{
    const CURLcode code = connection.wire.Code();
    const bool atProxy = !attempt.options.proxy.empty() && !connection.wire.Started();
    const std::string detail = Detail(connection);
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return Fail(HostError::ResolveFailed, attempt.name + "name of the server unknown" + detail);
    case CURLE_COULDNT_RESOLVE_PROXY:
        return Fail(HostError::ResolveFailed, attempt.name + "name of the proxy unknown" + detail);
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
        return FailTls(connection, attempt);
    case CURLE_COULDNT_CONNECT:
    case CURLE_PROXY:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_UNSUPPORTED_PROTOCOL:
        if (atProxy) {
            return FailAtProxy(connection, attempt);
        }
        if (code == CURLE_COULDNT_CONNECT) {
            return Fail(HostError::ConnectFailed, attempt.name + "could not connect to " + attempt.server +
                                                      Reason(connection) + "; is the platform running?");
        }
        if (code == CURLE_SEND_ERROR) {
            return Fail(HostError::SendFailed,
                        attempt.name + "connection to " + attempt.server + " broke while sending" + detail);
        }
        break;
    default:
        break;
    }
    return Fail(HostError::Internal, attempt.name + "libcurl error " + std::to_string(static_cast<int>(code)) +
                                         " with " + attempt.server + detail);
}

bool FailIncomplete(const Connection& connection, const Attempt& attempt)
{
    const httpcore::Connection& wire = connection.wire;
    const std::string detail = Detail(connection);
    if (!wire.Answer().Started()) {
        // Under TLS 1.3 the server judges our certificate when the request is on its way already.
        if (detail.find("alert") != std::string::npos && detail.find("certificate") != std::string::npos) {
            return Fail(HostError::TlsFailed,
                        attempt.name + attempt.server + " does not accept our client certificate" + detail);
        }
        if (wire.Code() == CURLE_GOT_NOTHING) {
            return Fail(HostError::AnswerIncomplete,
                        attempt.name + attempt.server + " closed the connection without an answer");
        }
    }
    return Fail(HostError::AnswerIncomplete, attempt.name + "connection to " + attempt.server + " ended " +
                                                 (wire.Answer().HeadEnded() ? "" : "within the head of the answer, ") +
                                                 "after " + std::to_string(wire.Answer().Received()) +
                                                 " bytes of the answer" + (wire.Code() == CURLE_OK ? "" : detail));
}

} // namespace

bool FailTransfer(Ending ending, const Connection& connection, const Attempt& attempt)
{
    const std::string received = " (received " + std::to_string(connection.wire.Answer().Received()) + " bytes)";
    const std::string longer = " of " + attempt.server + " is longer than ";
    switch (ending) {
    case Ending::Ended:
        return Fail(HostError::Aborted, attempt.name + "aborted" + received);
    case Ending::Late:
        return FailLate(connection, attempt);
    case Ending::HeadTooLong:
        return Fail(HostError::AnswerTooLarge,
                    attempt.name +
                        (connection.wire.Code() == CURLE_WRITE_ERROR
                             ? "header" + longer + std::to_string(httpcore::kLargestHeader)
                             : "a line in the header" + longer + std::to_string(httpcore::kLongestLine)) +
                        " bytes");
    case Ending::BodyTooLong:
        return Fail(HostError::AnswerTooLarge,
                    attempt.name + "answer" + longer + std::to_string(attempt.options.maxResponseBytes) + " bytes");
    case Ending::NoMemory:
        return Fail(HostError::OutOfMemory, attempt.name + "the answer does not fit into memory" + received);
    case Ending::Malformed:
        return Fail(HostError::AnswerMalformed,
                    attempt.name + "answer of " + attempt.server + " is not proper HTTP/1" + Detail(connection));
    case Ending::Incomplete:
        return FailIncomplete(connection, attempt);
    case Ending::Lost:
        return Fail(HostError::NotRepeated, attempt.name + "the kept connection to " + attempt.server +
                                                " closed after the request was sent and before an answer; whether it "
                                                "was carried out is unknown, so it was not sent again");
    case Ending::Answered:
    case Ending::Failed:
        break;
    }
    return FailOtherwise(connection, attempt);
}

bool FailAnswer(const Connection& connection, const RspInfos& response, const std::string& name,
                const std::string& server)
{
    const int status = connection.wire.Answer().Status();
    std::string text = name + "status " + std::to_string(status) + " from " + server;
    char* redirect = nullptr;
    if (status < 400 && curl_easy_getinfo(connection.wire.Easy(), CURLINFO_REDIRECT_URL, &redirect) == CURLE_OK &&
        redirect != nullptr) {
        std::string target = redirect;
        target.erase(std::min(target.find_first_of("?#"), target.size()));
        text += ", redirect to " + Printable(WithoutSecrets(target), kQuotedBytes) + " not followed";
    }
    if (!response.body.empty()) {
        // A secret that the cut would split is still whole here.
        text += ": " + Printable(WithoutSecrets(response.body.substr(0, kQuotedBytes * 4)), kQuotedBytes);
    }
    return FailStatus(status, text);
}

} // namespace nexwire::host

#include "httpcore/Connection.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <new>

#ifndef _WIN32
#include <poll.h>
#endif

#include "keel/StringUtil.h"

namespace httpcore {

namespace {

// OpenSSL, as libcurl uses it, takes any end of a TLS connection for an orderly one; the other TLS libraries do not.
bool EndsAreTakenOnTrust()
{
    static const bool openSsl = [] {
        const char* const name = curl_version_info(CURLVERSION_NOW)->ssl_version;
        return name != nullptr && std::strstr(name, "SSL/") != nullptr; // OpenSSL, LibreSSL, BoringSSL
    }();
    return openSsl;
}

constexpr std::size_t kLeastPiece = 64U * 1024U; // libcurl's own.
constexpr std::size_t kMostPiece = 1024U * 1024U;

// The longest wait for a socket, milliseconds. Winsock tells once that a socket can be written to, and libcurl can miss
// it between two waits; it looks again after this.
#ifdef _WIN32
constexpr int kLongestWait = 50;
#else
constexpr int kLongestWait = std::numeric_limits<int>::max();
#endif

// libcurl says the same for a line that is too long and for memory that has run out.
bool MemoryIsThere()
{
    return std::unique_ptr<char[]>(new (std::nothrow) char[kLongestLine * 4]) != nullptr;
}

std::string ReadFile(const std::string& path)
{
    std::ifstream stream(std::filesystem::u8path(path), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

// OpenSSL's numbers for what is wrong with a certificate.
enum : long {
    kUnspecified = 1, ///< Stands when the chain was good and the name was not.
    kNotYetValid = 9,
    kExpired = 10,
    kWrongPurpose = 26
};

} // namespace

bool StartLibcurl()
{
    static const CURLcode result = curl_global_init(CURL_GLOBAL_DEFAULT);
    return result == CURLE_OK;
}

Connection::~Connection()
{
    curl_easy_cleanup(easy_);
    if (multi_ != nullptr) {
        curl_multi_cleanup(multi_);
    }
}

bool Connection::Open(bool overTls)
{
    if (!StartLibcurl()) {
        return false;
    }
    easy_ = curl_easy_init();
    multi_ = curl_multi_init();
    if (easy_ == nullptr || multi_ == nullptr) {
        return false;
    }
    bool good =
        Set(CURLOPT_ERRORBUFFER, words_) && Set(CURLOPT_NOSIGNAL, 1L) && Set(CURLOPT_QUICK_EXIT, 1L) &&
        Set(CURLOPT_PROTOCOLS_STR, "http,https") && Set(CURLOPT_FOLLOWLOCATION, 0L) &&
        // Field names arrive as they were written, and one request is one exchange on one connection.
        Set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1)) &&
        Set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L) &&
        Set(CURLOPT_HEADERFUNCTION, static_cast<curl_write_callback>(OnLine)) && Set(CURLOPT_HEADERDATA, this) &&
        Set(CURLOPT_WRITEFUNCTION, static_cast<curl_write_callback>(OnBody)) && Set(CURLOPT_WRITEDATA, this) &&
        Set(CURLOPT_PREREQFUNCTION, static_cast<curl_prereq_callback>(OnStart)) && Set(CURLOPT_PREREQDATA, this) &&
        Set(CURLOPT_SOCKOPTFUNCTION, static_cast<curl_sockopt_callback>(OnSocket)) && Set(CURLOPT_SOCKOPTDATA, this) &&
        Set(CURLOPT_TCP_KEEPALIVE, 1L) && Set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2)) &&
        // An empty text keeps libcurl from asking the environment.
        Set(CURLOPT_PROXY, "") && Set(CURLOPT_NOPROXY, "");
    watchesEnd_ = overTls && EndsAreTakenOnTrust();
    if (good && watchesEnd_) {
        good = Set(CURLOPT_DEBUGFUNCTION, static_cast<curl_debug_callback>(OnDebug)) && Set(CURLOPT_DEBUGDATA, this) &&
               Set(CURLOPT_VERBOSE, 1L);
    }
    return good;
}

bool Connection::SetTls(const TlsSettings& settings)
{
    const bool schannel = OnSchannel();
    const long verify = settings.verifyPeer && !schannel ? 1 : 0;
    bool good = Set(CURLOPT_SSL_VERIFYPEER, verify) && Set(CURLOPT_SSL_VERIFYHOST, verify * 2) &&
                SetText(CURLOPT_KEYPASSWD, settings.clientKeyPassphrase);
    if (schannel) {
        judges_ = settings.verifyPeer;
        hasAuthorities_ = !settings.caFile.empty();
        authorities_ = hasAuthorities_ ? ReadFile(settings.caFile) : std::string();
        if (good && !settings.clientCertificateFile.empty()) {
            // libcurl would open the file by its name in the local code page.
            std::string bytes = ReadFile(settings.clientCertificateFile);
            curl_blob blob = {&bytes[0], bytes.size(), CURL_BLOB_COPY};
            good = Set(CURLOPT_SSLCERTTYPE, "P12") && Set(CURLOPT_SSLCERT_BLOB, &blob);
        }
        return good;
    }
    good = good && SetText(CURLOPT_CAINFO, settings.caFile) &&
           SetText(CURLOPT_SSLCERT, settings.clientCertificateFile) && SetText(CURLOPT_SSLKEY, settings.clientKeyFile);
    if (good && !settings.caFile.empty()) {
        // Not every TLS library has a directory of authorities to switch off.
        (void)Set(CURLOPT_CAPATH, static_cast<const char*>(nullptr));
    }
    return good;
}

bool Connection::SetMethod(const std::string& verb, const std::string* body)
{
    // Whatever carries a body or declares an empty one is a POST under another verb to libcurl.
    if (body != nullptr) {
        // Large bodies leave in large pieces; libcurl holds one of them beside the body.
        const long piece = static_cast<long>(std::clamp(body->size(), kLeastPiece, kMostPiece));
        if (piece != postPiece_ || verb != postVerb_) {
            postPiece_ = 0;
            if (!Set(CURLOPT_UPLOAD_BUFFERSIZE, piece) || !Set(CURLOPT_POST, 1L) ||
                !Set(CURLOPT_CUSTOMREQUEST, verb.c_str())) {
                return false;
            }
            postVerb_ = verb;
            postPiece_ = piece;
        }
        return Set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body->size())) &&
               Set(CURLOPT_POSTFIELDS, body->data());
    }
    postPiece_ = 0;
    return Set(CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t{0}) && Set(CURLOPT_POSTFIELDS, "") &&
           Set(verb == "HEAD" ? CURLOPT_NOBODY : CURLOPT_HTTPGET, 1L) && Set(CURLOPT_CUSTOMREQUEST, verb.c_str());
}

Ending Connection::Run(const AnswerInto& into, bool repeatOnce, const std::function<int()>& wait)
{
    answer_.Begin(into);
    mayRepeat_ = repeatOnce;
    keepable_ = connected_ = started_ = lost_ = repeated_ = refused_ = saidGoodbye_ = false;
    fault_ = CertificateFault::None;
    words_[0] = '\0';
    bool ended = false;
    code_ = Transfer(wait, ended);
    if (fault_ != CertificateFault::None) {
        code_ = fault_ == CertificateFault::BadAuthorities ? CURLE_SSL_CACERT_BADFILE : CURLE_PEER_FAILED_VERIFICATION;
    }
    const Ending ending = Judge(ended);
    if (ending == Ending::Answered && !answer_.Finish()) {
        return Ending::NoMemory;
    }
    keepable_ = ending == Ending::Answered && code_ == CURLE_OK && answer_.Keepable();
    return ending;
}

CURLcode Connection::Transfer(const std::function<int()>& wait, bool& ended)
{
    struct Joined {
        explicit Joined(Connection& joining)
            : owner(joining), code(curl_multi_add_handle(joining.multi_, joining.easy_))
        {
        }
        ~Joined()
        {
            if (code == CURLM_OK) {
                curl_multi_remove_handle(owner.multi_, owner.easy_); // With a transfer that is still under way.
            }
        }
        Connection& owner;
        const CURLMcode code;
    };
    const Joined joined(*this);
    CURLMcode code = joined.code;
    int running = 1;
    while (code == CURLM_OK) {
        code = curl_multi_perform(multi_, &running);
        if (code != CURLM_OK || running == 0) {
            break;
        }
        const int most = wait();
        if (most < 0) {
            ended = true;
            return CURLE_ABORTED_BY_CALLBACK;
        }
        // Not longer than libcurl's own timers allow.
        code = curl_multi_poll(multi_, nullptr, 0, std::min(most, kLongestWait), nullptr);
    }
    if (code != CURLM_OK) {
        return CURLE_FAILED_INIT;
    }
    NoteKept();
    int queued = 0;
    const CURLMsg* const message = curl_multi_info_read(multi_, &queued);
    return message != nullptr ? message->data.result : CURLE_FAILED_INIT;
}

Ending Connection::Judge(bool ended)
{
    if (ended) {
        return Ending::Ended;
    }
    switch (answer_.GetFault()) {
    case AnswerReader::Fault::None:
        break;
    case AnswerReader::Fault::HeadTooLong:
        return Ending::HeadTooLong;
    case AnswerReader::Fault::BodyTooLong:
        return Ending::BodyTooLong;
    case AnswerReader::Fault::NoMemory:
        return Ending::NoMemory;
    case AnswerReader::Fault::Malformed:
        return Ending::Malformed;
    }
    if (refused_) {
        return Ending::Lost;
    }
    switch (code_) {
    case CURLE_OK: {
        // To libcurl a head that ends with the connection is a whole answer, and so is a TLS connection cut anywhere.
        const bool cut = watchesEnd_ && answer_.EndsWithConnection() && !saidGoodbye_;
        return answer_.HeadEnded() && !cut ? Ending::Answered : Ending::Incomplete;
    }
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_OPERATION_TIMEDOUT:
        // The server did not read the request to its end, and said why.
        if (answer_.Whole()) {
            return Ending::Answered;
        }
        if (code_ == CURLE_OPERATION_TIMEDOUT) {
            return Ending::Late;
        }
        return code_ == CURLE_RECV_ERROR && started_ ? Ending::Incomplete : Ending::Failed;
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
        return started_ ? Ending::Incomplete : Ending::Failed;
    case CURLE_OUT_OF_MEMORY:
        return started_ && !answer_.HeadEnded() && MemoryIsThere() ? Ending::HeadTooLong : Ending::NoMemory;
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
        return started_ ? Ending::Malformed : Ending::Failed;
    default:
        return Ending::Failed;
    }
}

void Connection::NoteKept()
{
    // Otherwise it is the one already known. Should it have been closed, it does not pass for clean.
    if (connected_ && curl_easy_getinfo(easy_, CURLINFO_ACTIVESOCKET, &socket_) != CURLE_OK) {
        socket_ = CURL_SOCKET_BAD;
    }
}

bool Connection::IsClean()
{
    if (socket_ == CURL_SOCKET_BAD) {
        return true;
    }
    // libcurl's own way would cost more than all else that a call does here.
#ifdef _WIN32
    WSAPOLLFD watched = {socket_, POLLRDNORM, 0};
    return WSAPoll(&watched, 1, 0) == 0;
#else
    pollfd watched = {socket_, POLLIN, 0};
    return poll(&watched, 1, 0) == 0;
#endif
}

std::uint64_t Connection::SentBytes() const
{
    curl_off_t sent = 0;
    curl_easy_getinfo(easy_, CURLINFO_SIZE_UPLOAD_T, &sent);
    return static_cast<std::uint64_t>(sent);
}

long Connection::Info(CURLINFO info) const
{
    long value = 0;
    return curl_easy_getinfo(easy_, info, &value) == CURLE_OK ? value : 0;
}

CertificateFault Connection::Fault() const
{
    if (judges_) {
        return fault_;
    }
    switch (Info(CURLINFO_SSL_VERIFYRESULT)) {
    case 0:
    case kUnspecified:
        return CertificateFault::OtherName;
    case kNotYetValid:
        return CertificateFault::NotYetValid;
    case kExpired:
        return CertificateFault::Expired;
    case kWrongPurpose:
        return CertificateFault::WrongPurpose;
    default:
        return CertificateFault::Untrusted;
    }
}

std::string Connection::Why() const
{
    if (fault_ != CertificateFault::None) {
        return faultWords_;
    }
    if (answer_.GetFault() == AnswerReader::Fault::Malformed) {
        return answer_.Why();
    }
    return Keel::StringUtil::SingleLine(words_[0] != '\0' ? words_ : curl_easy_strerror(code_));
}

std::size_t Connection::OnLine(char* line, std::size_t, std::size_t size, void* self) noexcept
{
    return static_cast<Connection*>(self)->answer_.TakeLine(line, size) ? size : 0;
}

std::size_t Connection::OnBody(char* bytes, std::size_t, std::size_t size, void* self) noexcept
{
    return static_cast<Connection*>(self)->answer_.TakeBody(bytes, size) ? size : 0;
}

// libcurl repeats a request by itself when a kept connection dies before an answer, even if the request went out.
// Asked before every attempt. What counts is whether a byte was sent in the one before.
bool Connection::MayAttempt()
{
    long sent = 0;
    if (started_ && (curl_easy_getinfo(easy_, CURLINFO_REQUEST_SIZE, &sent) != CURLE_OK || sent != 0)) {
        lost_ = true;
        refused_ = !mayRepeat_ || repeated_;
    }
    return !refused_;
}

// Whether the request may go to the server. A kept connection was judged when it was made.
bool Connection::Trusts()
{
    if (judges_ && connected_) {
        fault_ = JudgeServer(easy_, hasAuthorities_ ? &authorities_ : nullptr, faultWords_);
    }
    return fault_ == CertificateFault::None;
}

// Before a new connection is made.
int Connection::OnSocket(void* self, curl_socket_t, curlsocktype) noexcept
{
    auto& connection = *static_cast<Connection*>(self);
    connection.connected_ = true;
    return connection.MayAttempt() ? CURL_SOCKOPT_OK : CURL_SOCKOPT_ERROR;
}

// When a connection stands, before the first byte of the request.
int Connection::OnStart(void* self, char*, char*, int, int) noexcept
{
    auto& connection = *static_cast<Connection*>(self);
    if (!connection.MayAttempt() || !connection.Trusts()) {
        return CURL_PREREQFUNC_ABORT;
    }
    connection.repeated_ = connection.lost_;
    connection.started_ = true;
    connection.startedAt_ = std::chrono::steady_clock::now();
    return CURL_PREREQFUNC_OK;
}

// libcurl has no other way to tell how a TLS connection ended.
int Connection::OnDebug(CURL*, curl_infotype type, char* text, std::size_t size, void* self) noexcept
{
    static const char kAlert[] = "close notify";
    static const char kInbound[] = "(IN)";
    const auto holds = [&](const char* part) {
        return std::search(text, text + size, part, part + std::strlen(part)) != text + size;
    };
    if (type == CURLINFO_TEXT && holds(kInbound) && holds(kAlert)) {
        static_cast<Connection*>(self)->saidGoodbye_ = true;
    }
    return 0;
}

} // namespace httpcore

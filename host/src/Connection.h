#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <thread>

#include <curl/curl.h>

#include "nexwire/RequestRecords.h"
#include "nexwire/host/HttpRequestExecutor.h"

namespace nexwire {
namespace host {

/// Most bytes of header fields of one answer; some versions of libcurl draw a line at 300 KiB.
constexpr std::uint64_t kLargestHeader = std::uint64_t{256} << 10;

/// What the callbacks gather during one exchange.
struct Exchange {
    RspInfos* response = nullptr;
    std::uint64_t bodyLimit = 0;
    std::uint64_t received = 0; ///< Bytes of the answer, header fields included.
    std::uint64_t headerBytes = 0;
    std::uint64_t declared = 0;       ///< "Content-Length" of the answer, 0 when it has none.
    std::string* lastValue = nullptr; ///< Where a continuation line goes.
    bool inHeader = false;            ///< Between a status line and the blank line after it.
    bool tooLarge = false;
    bool outOfMemory = false;
    bool connected = false; ///< A connection was made for it.
    bool started = false;   ///< The request was handed to a connection.
    bool repeatRefused = false;
};

/// One handle with the connection it keeps. Used by one thread at a time.
struct Connection {
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    CURL* easy = nullptr;
    CURLM* multi = nullptr; ///< Owns the connection; unlike an easy handle alone it can be woken from outside.
    curl_slist* fields = nullptr;
    // What `fields` was built from.
    std::map<std::string, std::string> headers;
    std::map<std::string, std::string> params;
    bool withBody = false;
    bool fieldsBuilt = false;
    std::string target;
    curl_socket_t socket = CURL_SOCKET_BAD; ///< Of the kept connection.
    std::thread::id user;                   ///< Thread that used it last.
    Exchange exchange;
    char detail[CURL_ERROR_SIZE] = {};
};

/// Sets what is the same for every request; false when libcurl does not take it.
bool Prepare(Connection& connection, const HttpExecutorOptions& options);

/// Sets what is this request's: verb, target (`prefix` and the path), fields, body. The body is not copied and must
/// outlive the transfer.
bool SetRequest(Connection& connection, const HttpExecutorOptions& options, const std::string& prefix,
                const std::string& verb, const RequestParams& request);

/// Notes the connection of a transfer that has ended; before the handles part.
void NoteKept(Connection& connection);

/// Whether the kept connection can carry another request: it is open, and nothing has arrived on it since the last
/// answer. What came unasked would be taken for the answer to the next request. True when no connection is kept.
bool IsClean(Connection& connection);

template <class Value>
bool SetOption(CURL* easy, CURLoption option, Value value)
{
    return curl_easy_setopt(easy, option, value) == CURLE_OK;
}

} // namespace host
} // namespace nexwire

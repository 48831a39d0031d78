#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "nexwire/Export.h"

namespace nexwire {

/// One exchange as the library describes it to the host's transport.
struct NEXWIRE_API RequestParams {
    /// How long an exchange may take unless the caller says otherwise.
    static constexpr std::int32_t kDefaultTimeoutMs = 40000;

    RequestParams(const std::string& url, std::int32_t method);
    RequestParams(const std::string& url, std::int32_t method, const std::string& body);

    std::string url;                            ///< Path with its leading slash; never a scheme or a host.
    std::int32_t method;                        ///< Method code: 0 read, 1 write, 2 query, 3 remove.
    std::map<std::string, std::string> headers; ///< Marks for the transport: "SID", "RequstType", "Range", "query".
    std::map<std::string, std::string> params;  ///< "Content-Type" of multipart and ranged transfers, else empty.
    std::string body;                           ///< JSON text, or empty when the request carries none.
    std::int32_t timeoutMs = kDefaultTimeoutMs; ///< Milliseconds for the whole exchange.
};

/// The answer as the transport received it.
struct NEXWIRE_API RspInfos {
    std::map<std::string, std::string> headers; ///< Header fields, keyed by their name as sent.
    std::string body;                           ///< Response bytes, any value including NUL.
};

} // namespace nexwire

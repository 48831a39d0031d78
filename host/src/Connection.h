#pragma once

#include <map>
#include <string>
#include <thread>

#include <httpcore/Connection.h>
#include <httpcore/Fields.h>

#include "nexwire/RequestRecords.h"
#include "nexwire/host/HttpRequestExecutor.h"

namespace nexwire::host {

/// A connection of the executor with what was set for the request before, so that equal fields are not built again.
/// Used by one thread at a time.
struct Connection {
    httpcore::Connection wire;
    httpcore::FieldList fields;
    // What `fields` was built from.
    std::map<std::string, std::string> headers;
    std::map<std::string, std::string> params;
    bool withBody = false;
    bool fieldsBuilt = false;
    std::string target;
    std::thread::id user; ///< Thread that used it last.
};

/// Sets what is the same for every request; false when libcurl does not take it.
///
/// @param asksForNames  a name server knows the address of the server, or of the proxy.
bool Prepare(Connection& connection, const HttpExecutorOptions& options, bool asksForNames);

/// Sets what is this request's: verb, target (`prefix` and the path), fields, body. The body is not copied and must
/// outlive the transfer.
bool SetRequest(Connection& connection, const HttpExecutorOptions& options, const std::string& prefix,
                const std::string& verb, const RequestParams& request);

} // namespace nexwire::host

#include "Connection.h"

namespace nexwire::host {

namespace {

// The fields of the request as libcurl wants them. Rebuilt only when something differs from the request before.
void SetFields(Connection& connection, const HttpExecutorOptions& options, const RequestParams& request)
{
    const bool withBody = !request.body.empty();
    if (connection.fieldsBuilt && connection.withBody == withBody && connection.headers == request.headers &&
        connection.params == request.params) {
        return;
    }
    connection.fieldsBuilt = false;

    std::map<std::string, std::string, httpcore::NameLess> fields(options.extraHeaders.begin(),
                                                                  options.extraHeaders.end());
    if (withBody) {
        fields.emplace("Content-Type", "application/json");
    }
    for (const auto* entries : {&request.headers, &request.params}) {
        for (const auto& [name, value] : *entries) {
            if (options.queryInUrl && entries == &request.headers && name == "query") {
                continue;
            }
            fields.erase(name); // The spelling of the later one goes out.
            fields.emplace(name, value);
        }
    }
    httpcore::FieldList list;
    for (const auto& [name, value] : fields) {
        list.Add(name, value);
    }
    list.LeaveOut("Expect"); // The body follows at once, whatever its length.
    if (fields.find("Content-Type") == fields.end()) {
        list.LeaveOut("Content-Type");
    }
    connection.wire.Set(CURLOPT_HTTPHEADER, list.Get());
    connection.fields.Swap(list);
    connection.headers = request.headers;
    connection.params = request.params;
    connection.withBody = withBody;
    connection.fieldsBuilt = true;
}

void SetTarget(std::string& target, const std::string& prefix, const HttpExecutorOptions& options,
               const RequestParams& request)
{
    target.assign(prefix).append(request.url);
    if (options.queryInUrl) {
        const auto query = request.headers.find("query");
        if (query != request.headers.end()) {
            target.append(1, '?').append(query->second);
        }
    }
}

} // namespace

bool Prepare(Connection& connection, const HttpExecutorOptions& options, bool asksForNames)
{
    httpcore::Connection& wire = connection.wire;
    const bool overTls = httpcore::SameName(options.baseAddress.substr(0, 6), "https:");
    httpcore::TlsSettings tls;
    tls.verifyPeer = options.verifyPeer;
    tls.caFile = options.caFile;
    tls.clientCertificateFile = options.clientCertificateFile;
    tls.clientKeyFile = options.clientKeyFile;
    tls.clientKeyPassphrase = options.clientKeyPassphrase;
    return wire.Open(overTls) && (!overTls || wire.SetTls(tls)) && wire.Set(CURLOPT_URL, options.baseAddress.c_str()) &&
           wire.Set(CURLOPT_MAXAGE_CONN, static_cast<long>(options.maxIdleSeconds)) &&
           // Else libcurl goes through all names that it knows before every request.
           (asksForNames || wire.Set(CURLOPT_DNS_CACHE_TIMEOUT, -1L)) && wire.SetText(CURLOPT_PROXY, options.proxy) &&
           wire.SetText(CURLOPT_USERAGENT, options.userAgent);
}

bool SetRequest(Connection& connection, const HttpExecutorOptions& options, const std::string& prefix,
                const std::string& verb, const RequestParams& request)
{
    SetFields(connection, options, request);
    SetTarget(connection.target, prefix, options, request);
    const bool declares = !request.body.empty() || verb == "PUT" || verb == "POST" || verb == "PATCH";
    return connection.wire.SetMethod(verb, declares ? &request.body : nullptr) &&
           // As a part of the address libcurl would encode bytes above 0x7F.
           connection.wire.Set(CURLOPT_REQUEST_TARGET, connection.target.c_str());
}

} // namespace nexwire::host

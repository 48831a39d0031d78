#include "tools/Verbs.h"

#include "nexwire/host/HttpRequestExecutor.h"

namespace nexwire::tools {

std::string VerbOf(int method)
{
    static const host::HttpExecutorOptions options;
    const auto verb = options.verbs.find(method);
    return verb == options.verbs.end() ? "?" : verb->second;
}

std::string MeaningOf(int method)
{
    static const char* const meanings[] = {"read", "write", "query", "remove"};
    return method >= 0 && method < 4 ? meanings[method] : "unknown";
}

} // namespace nexwire::tools

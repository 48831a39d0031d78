#include "core/ConfigManager.h"

#include <new>

#include "core/Pipeline.h"
#include "nexwire/ConfigManagerProxy.h"
#include "nexwire/Nexwire.h"

namespace nexwire {

IRequestExecutor::~IRequestExecutor() = default;
IEncryption::~IEncryption() = default;

RequestParams::RequestParams(const std::string& url_, std::int32_t method_) : url(url_), method(method_) {}

RequestParams::RequestParams(const std::string& url_, std::int32_t method_, const std::string& body_)
    : url(url_), method(method_), body(body_)
{
}

void core::PrepareThread()
{
    static thread_local bool prepared = false;
    if (!prepared) {
        // Room for the registrations, given back for them to take.
        ::operator delete(::operator new(256));
        prepared = true;
    }
}

RequestContext& RequestContext::Instance()
{
    // Constant-initialised and trivially destroyed: there before the first thread and until after the last.
    static RequestContext context;
    return context;
}

bool NexwireInit(const NexwireInitParams& params)
{
    RequestContext& context = RequestContext::Instance();
    if (context.initialised) {
        return false;
    }
    context.executor = params.executor;
    context.encryption = params.encryption != nullptr ? params.encryption : MakeDefaultEncryption();
    context.initialised = true;
    return true;
}

bool NexwireUnInit()
{
    RequestContext& context = RequestContext::Instance();
    if (!context.initialised) {
        return false;
    }
    delete context.executor;
    context.executor = nullptr;
    delete context.encryption;
    context.encryption = nullptr;
    context.initialised = false;
    return true;
}

bool CConfigManagerProxy::httpRequest(RspInfos& response, const RequestParams& request)
{
    return core::Guard([&] { return core::Execute(response, request); });
}

} // namespace nexwire

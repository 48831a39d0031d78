#include "Secrets.h"

#include "keel/Redact.h"

#include "httpcore/Fields.h"

namespace nexwire {
namespace host {

std::string WithoutSecrets(const std::string& text)
{
    static const Keel::CRedactor redactor;
    return redactor.Redact(text);
}

bool IsSecretField(const std::string& name)
{
    for (const char* secret : {"SID", "Authorization", "Proxy-Authorization", "Cookie", "Set-Cookie"}) {
        if (httpcore::SameName(name, secret)) {
            return true;
        }
    }
    return false;
}

} // namespace host
} // namespace nexwire

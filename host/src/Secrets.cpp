#include "Secrets.h"

#include <keel/Redact.h>

namespace nexwire::host {

namespace {

const Keel::CRedactor& Redactor()
{
    static const Keel::CRedactor redactor;
    return redactor;
}

} // namespace

std::string WithoutSecrets(const std::string& text)
{
    return Redactor().Redact(text);
}

bool IsSecretField(const std::string& name)
{
    return Redactor().IsSecret(name);
}

} // namespace nexwire::host

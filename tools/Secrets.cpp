#include "tools/Secrets.h"

#include <keel/Redact.h>

#include "catalogue/Find.h"
#include "catalogue/Types.h"
#include "tools/Console.h"

namespace nexwire::tools {
namespace {

const Keel::CRedactor& Redactor()
{
    static const Keel::CRedactor redactor;
    return redactor;
}

} // namespace

bool Resolve(const std::string& text, std::string& value, bool& typed, std::string& error)
{
    typed = false;
    if (text.compare(0, 5, "@env:") == 0) {
        const std::string name = text.substr(5);
        if (!FromEnvironment(name, value)) {
            error = "the environment has no " + name;
            return false;
        }
        return true;
    }
    if (text.compare(0, 6, "@file:") == 0) {
        if (!ReadWhole(text.substr(6), value, error)) {
            return false;
        }
        if (!value.empty() && value.back() == '\n') {
            value.pop_back();
            if (!value.empty() && value.back() == '\r') {
                value.pop_back();
            }
        }
        return true;
    }
    typed = true;
    value = text.compare(0, 2, "@@") == 0 ? text.substr(1) : text;
    return true;
}

bool IsSecret(const std::string& name, const std::string& value)
{
    if (value.empty()) {
        return false;
    }
    std::string redacted;
    return Redactor().Redact("{" + catalogue::WriteText(name) + ":" + catalogue::WriteText(value) + "}", redacted) ||
           (value.find_first_of("{[") == 0 && Redactor().Redact(value, redacted));
}

bool IsSecretHeader(const std::string& name)
{
    return Redactor().IsSecret(name);
}

std::string Redacted(const std::string& text)
{
    return Redactor().Redact(text);
}

} // namespace nexwire::tools

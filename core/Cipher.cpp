#include "core/Cipher.h"

#include "core/ConfigManager.h"
#include "core/Guard.h"
#include "core/Pipeline.h"

namespace nexwire::core {

bool Convert(std::initializer_list<std::string*> texts, CipherStep step) noexcept
{
    return Guard([&] {
        const RequestContext& context = RequestContext::Instance();
        if (!context.initialised || context.encryption == nullptr) {
            return false;
        }
        std::vector<std::string> input;
        for (const std::string* const text : texts) {
            input.push_back(*text);
        }
        std::vector<std::string> output;
        const InnerExchanges inner;
        if (!(context.encryption->*step)(output, input, std::string()) || output.size() != input.size()) {
            return false;
        }
        auto converted = output.begin();
        for (std::string* const text : texts) {
            *text = std::move(*converted++);
        }
        return true;
    });
}

} // namespace nexwire::core

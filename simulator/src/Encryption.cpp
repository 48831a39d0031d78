#include "src/Services.h"

namespace nexwire::simulator {
namespace {

// Answers {to: [{"plaintext", "ciphertext"}]} for the texts of the body's `from`, in order.
Service Translate(std::string from, std::string to, std::function<std::string(std::string_view)> translate)
{
    const std::string input = from == "plaintextList" ? "plaintext" : "ciphertext";
    const std::string output = from == "plaintextList" ? "ciphertext" : "plaintext";
    return [=](Handling& handling) {
        Allocator& memory = handling.Memory();
        Json list(rapidjson::kArrayType);
        for (const Json& text : Member(*handling.body, from)->GetArray()) {
            Json pair(rapidjson::kObjectType);
            SetMember(pair, input, Copy(text, memory), memory);
            SetMember(pair, output, MakeText(translate(AsText(&text)), memory), memory);
            list.PushBack(pair, memory);
        }
        SetMember(handling.data, to, std::move(list), memory);
    };
}

} // namespace

void AddEncryption(Services& services, std::shared_ptr<const Cipher> cipher)
{
    services["encrypt"] =
        Translate("plaintextList", "ciphertextList", [cipher](std::string_view text) { return cipher->Encrypt(text); });
    services["decrypt"] =
        Translate("ciphertextList", "plaintextList", [cipher](std::string_view text) { return cipher->Decrypt(text); });
}

} // namespace nexwire::simulator

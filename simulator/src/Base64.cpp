#include "src/Base64.h"

#include <openssl/evp.h>

#include <climits>

namespace nexwire::simulator {
namespace {

unsigned char* Bytes(std::string& text)
{
    return reinterpret_cast<unsigned char*>(text.data());
}

const unsigned char* Bytes(std::string_view text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

} // namespace

std::string ToBase64(std::string_view bytes)
{
    std::string text((bytes.size() + 2) / 3 * 4 + 1, '\0');
    const int size = EVP_EncodeBlock(Bytes(text), Bytes(bytes), static_cast<int>(bytes.size()));
    text.resize(static_cast<std::size_t>(size));
    return text;
}

bool FromBase64(std::string_view text, std::string& bytes)
{
    if (text.empty() || text.size() % 4 != 0 || text.size() > INT_MAX) {
        return false;
    }
    bytes.assign(text.size() / 4 * 3, '\0');
    if (EVP_DecodeBlock(Bytes(bytes), Bytes(text), static_cast<int>(text.size())) < 0) {
        return false;
    }
    const std::size_t padding = text.substr(text.size() - 2) == "==" ? 2 : text.back() == '=' ? 1 : 0;
    bytes.resize(bytes.size() - padding);
    return ToBase64(bytes) == text;
}

} // namespace nexwire::simulator

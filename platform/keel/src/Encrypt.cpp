#include "keel/Encrypt.h"

#include <array>
#include <cstdint>

namespace Keel::Encrypt {
namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t kForeign = 0xFF;

constexpr std::array<std::uint8_t, 256> MakeValues()
{
    std::array<std::uint8_t, 256> values{};
    for (std::uint8_t& value : values) {
        value = kForeign;
    }
    for (std::uint8_t i = 0; i < 64; ++i) {
        values[static_cast<unsigned char>(kAlphabet[i])] = i;
    }
    return values;
}

constexpr std::array<std::uint8_t, 256> kValues = MakeValues();

} // namespace

std::string Base64Encode(const std::string& bytes)
{
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = bytes.size() - i < 3 ? bytes.size() - i : 3;
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            bits = bits << 8U | (k < count ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        }
        text += kAlphabet[bits >> 18U & 63U];
        text += kAlphabet[bits >> 12U & 63U];
        text += count > 1 ? kAlphabet[bits >> 6U & 63U] : '=';
        text += count > 2 ? kAlphabet[bits & 63U] : '=';
    }
    return text;
}

bool Base64Decode(const std::string& text, std::string& bytes)
{
    if (text.size() % 4 != 0) {
        return false;
    }
    std::string decoded;
    decoded.reserve(text.size() / 4 * 3);
    for (std::size_t i = 0; i < text.size(); i += 4) {
        std::size_t digits = 4;
        if (i + 4 == text.size() && text[i + 3] == '=') {
            digits = text[i + 2] == '=' ? 2 : 3;
        }
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 4; ++k) {
            const std::uint8_t value = k < digits ? kValues[static_cast<unsigned char>(text[i + k])] : std::uint8_t{0};
            if (value == kForeign) {
                return false;
            }
            bits = bits << 6U | value;
        }
        if ((digits == 2 && (bits & 0xFFFFU) != 0) || (digits == 3 && (bits & 0xFFU) != 0)) {
            return false;
        }
        for (std::size_t k = 0; k + 1 < digits; ++k) {
            decoded += static_cast<char>(bits >> (16U - 8U * k) & 0xFFU);
        }
    }
    bytes.swap(decoded);
    return true;
}

} // namespace Keel::Encrypt

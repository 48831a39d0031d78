#include <array>

#include "src/Equipment.h"

// Pictures in the PNG form, uncompressed: one block of zlib's "stored" kind.

namespace nexwire::simulator {
namespace {

void PutBig(std::string& bytes, std::uint32_t value)
{
    for (unsigned shift = 32; shift > 0; shift -= 8) {
        bytes += static_cast<char>(value >> (shift - 8u) & 0xFFu);
    }
}

std::uint32_t Crc(std::string_view bytes)
{
    std::uint32_t crc = 0xFFFFFFFFu;
    for (const char c : bytes) {
        crc ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1u) ^ ((crc & 1u) != 0 ? 0xEDB88320u : 0u);
        }
    }
    return ~crc;
}

std::uint32_t Adler(std::string_view bytes)
{
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (const char c : bytes) {
        low = (low + static_cast<unsigned char>(c)) % 65521;
        high = (high + low) % 65521;
    }
    return high << 16u | low;
}

void PutChunk(std::string& bytes, const char* type, const std::string& content)
{
    PutBig(bytes, static_cast<std::uint32_t>(content.size()));
    const std::string checked = type + content;
    bytes += checked;
    PutBig(bytes, Crc(checked));
}

} // namespace

std::string Picture(std::string_view about, bool small)
{
    const std::uint32_t width = small ? 48 : 144;
    const std::uint32_t height = small ? 36 : 108;
    const std::uint32_t seed = Crc(about);
    std::string rows; // Less than 64 KiB, the most that one block holds.
    for (std::uint32_t y = 0; y < height; ++y) {
        rows += '\0'; // No filter.
        for (std::uint32_t x = 0; x < width; ++x) {
            const std::uint32_t cell = seed >> ((x * 8 / width + y * 4 / height * 8) % 32) & 1u;
            for (const std::uint32_t shift : {0u, 8u, 16u}) {
                rows += static_cast<char>(cell != 0 ? (seed >> shift & 0xFFu) : (x + y) % 256);
            }
        }
    }
    const auto size = static_cast<std::uint16_t>(rows.size());
    std::string packed = {'\x78', '\x01', '\x01'};
    for (const std::uint16_t each : {size, static_cast<std::uint16_t>(~size)}) {
        packed += static_cast<char>(each & 0xFFu);
        packed += static_cast<char>(each >> 8u);
    }
    packed += rows;
    PutBig(packed, Adler(rows));

    std::string header;
    PutBig(header, width);
    PutBig(header, height);
    header += std::string("\x08\x02\0\0\0", 5); // 8 bits for each of red, green and blue.
    std::string png = "\x89PNG\r\n\x1A\n";
    PutChunk(png, "IHDR", header);
    PutChunk(png, "IDAT", packed);
    PutChunk(png, "IEND", {});
    return png;
}

} // namespace nexwire::simulator

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace nexwire::core {

/// So many characters of a text are looked at together.
constexpr std::size_t kWordBytes = sizeof(std::uint64_t);

/// What stands for each character inside a JSON text: 0 itself, 'u' its number, anything else a letter behind a
/// backslash.
constexpr std::array<char, 256> MakeEscapes()
{
    std::array<char, 256> escapes{};
    for (std::size_t i = 0; i < 32; ++i) {
        escapes[i] = 'u';
    }
    escapes['\b'] = 'b';
    escapes['\f'] = 'f';
    escapes['\n'] = 'n';
    escapes['\r'] = 'r';
    escapes['\t'] = 't';
    escapes['"'] = '"';
    escapes['\\'] = '\\';
    return escapes;
}

inline constexpr std::array<char, 256> kEscapes = MakeEscapes();

/// Not 0 if one of the characters is a control character, a quotation mark or a backslash. Of the first one in memory,
/// where words begin with their lowest byte, the highest bit is set, and no bit is below it.
inline std::uint64_t EscapesIn(std::uint64_t word)
{
    constexpr std::uint64_t kEach = 0x0101010101010101;
    const std::uint64_t quote = word ^ (kEach * '"');
    const std::uint64_t backslash = word ^ (kEach * '\\');
    const std::uint64_t found =
        ((word - kEach * 0x20) & ~word) | ((quote - kEach) & ~quote) | ((backslash - kEach) & ~backslash);
    return found & (kEach * 0x80);
}

/// The first of those characters; one stands at `end` at the latest.
inline const char* EndOfPlainText(const char* text, const char* end)
{
#if defined(__SSE2__)
    constexpr std::ptrdiff_t kBlock = sizeof(__m128i);
    for (; end - text >= kBlock; text += kBlock) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
        const __m128i quotes = _mm_cmpeq_epi8(block, _mm_set1_epi8('"'));
        const __m128i backslashes = _mm_cmpeq_epi8(block, _mm_set1_epi8('\\'));
        const __m128i controls = _mm_cmpeq_epi8(_mm_min_epu8(block, _mm_set1_epi8(0x1F)), block);
        const int found = _mm_movemask_epi8(_mm_or_si128(_mm_or_si128(quotes, backslashes), controls));
        if (found != 0) {
            return text + __builtin_ctz(static_cast<unsigned>(found));
        }
    }
#endif
    while (static_cast<std::size_t>(end - text) >= kWordBytes) {
        std::uint64_t word = 0;
        std::memcpy(&word, text, kWordBytes);
        const std::uint64_t escapes = EscapesIn(word);
        if (escapes != 0) {
#if defined(_WIN32) || (defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__)
            // One bit for each byte up to the first found, added up in the highest byte.
            constexpr std::uint64_t kEach = 0x0101010101010101;
            const std::uint64_t upTo = (escapes - 1) & ~escapes & kEach;
            return text + (upTo * kEach >> 56) - 1;
#else
            break;
#endif
        }
        text += kWordBytes;
    }
    while (kEscapes[static_cast<unsigned char>(*text)] == 0) {
        ++text;
    }
    return text;
}

} // namespace nexwire::core
